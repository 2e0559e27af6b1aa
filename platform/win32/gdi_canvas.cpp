#include "platform/win32/gdi_canvas.h"

#include "platform/win32/text.h"

#include <algorithm>

namespace orvane {

HFONT FontCache::Find(const Font& font, int height) {
  UniqueFont& found = fonts_[{std::string(font.face), height, font.bold}];
  if (!found) {
    LOGFONTW wanted{};
    wanted.lfHeight = -height;
    wanted.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
    wanted.lfCharSet = ANSI_CHARSET;
    wanted.lfQuality =
        ANTIALIASED_QUALITY;  // grey levels: coloured edges would not match the face's pictures
    ToWide(font.face).copy(wanted.lfFaceName, LF_FACESIZE - 1);
    found.reset(::CreateFontIndirectW(&wanted));
  }
  return found.get();
}

BackBuffer::BackBuffer() : dc_(::CreateCompatibleDC(nullptr)) {}

BackBuffer::~BackBuffer() {
  if (original_ != nullptr) ::SelectObject(dc_.get(), original_);
}

Surface BackBuffer::Take(int width, int height) {
  if (width > width_ || height > height_) {
    width_ = std::max(width, width_);
    height_ = std::max(height, height_);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width_;
    info.bmiHeader.biHeight = -height_;  // rows from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    UniqueBitmap bitmap(::CreateDIBSection(dc_.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const HGDIOBJ before = ::SelectObject(dc_.get(), bitmap.get());
    if (original_ == nullptr) original_ = before;
    bitmap_ = std::move(bitmap);
    pixels_ = static_cast<std::uint32_t*>(bits);
    if (pixels_ == nullptr) width_ = height_ = 0;
  }
  if (pixels_ == nullptr) return {};
  ::GdiFlush();
  return {pixels_, width, height, width_};
}

void GdiCanvas::DrawTextPixels(const Rect& area, std::string_view text, const Font& font, int height,
                               Color color, Align align) {
  const std::wstring wide = ToWide(text);
  const HGDIOBJ before = ::SelectObject(dc_, fonts_.Find(font, height));
  SIZE size{};
  ::GetTextExtentPoint32W(dc_, wide.data(), static_cast<int>(wide.size()), &size);
  int x = area.left;
  if (align == Align::kCenter) x += (area.width - size.cx) / 2;
  if (align == Align::kRight) x += area.width - size.cx;
  const int y = area.top + (area.height - size.cy) / 2;
  ::SetTextColor(dc_, color);
  ::SetBkMode(dc_, TRANSPARENT);
  const RECT clip{area.left, area.top, area.right(), area.bottom()};
  ::ExtTextOutW(dc_, x, y, ETO_CLIPPED, &clip, wide.data(), static_cast<UINT>(wide.size()), nullptr);
  ::SelectObject(dc_, before);
  ::GdiFlush();  // shapes are drawn into the same memory directly
}

}  // namespace orvane
