#include "base/text.h"

#include <algorithm>

namespace orvane {
namespace {

char Fold(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
bool SameLetter(char a, char b) {
  return Fold(a) == Fold(b);
}

}  // namespace

bool EqualNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), SameLetter);
}

std::size_t FindNoCase(std::string_view text, std::string_view part) {
  const auto found = std::search(text.begin(), text.end(), part.begin(), part.end(), SameLetter);
  if (found == text.end() && !part.empty()) return std::string_view::npos;
  return static_cast<std::size_t>(found - text.begin());
}

std::string_view TrimRight(std::string_view text) {
  const auto last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view{} : TrimRight(text.substr(first));
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  if (text.empty()) return pieces;
  std::size_t start = 0;
  for (;;) {
    const auto end = text.find(separator, start);
    pieces.push_back(text.substr(start, end - start));
    if (end == std::string_view::npos) return pieces;
    start = end + 1;
  }
}

std::string RemoveFirst(std::string_view text, char letter) {
  std::string rest(text);
  if (const auto at = rest.find(letter); at != std::string::npos) rest.erase(at, 1);
  return rest;
}

std::string ReplaceAll(std::string_view text, char from, char to) {
  std::string changed(text);
  std::replace(changed.begin(), changed.end(), from, to);
  return changed;
}

}  // namespace orvane
