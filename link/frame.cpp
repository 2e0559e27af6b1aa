#include "link/frame.h"

#include "link/crc8.h"

namespace orvane {

std::string FrameCommand(std::string_view text) {
  std::string frame;
  frame.reserve(text.size() + 5);
  frame += kSTX;
  frame += text;
  frame += kETX;
  frame += CRCToHex(CalcCRC8(text, true, false));
  frame += kCR;
  return frame;
}

}  // namespace orvane
