#pragma once

#include "platform/win32/windows_api.h"

#include <utility>

namespace orvane {

/// Owns one handle of the system and gives it back by `Closer`. Empty is a null handle; INVALID_HANDLE_VALUE,
/// which some calls return instead, counts as empty too.
template <typename Handle, typename Closer>
class UniqueResource {
 public:
  UniqueResource() = default;
  explicit UniqueResource(Handle handle) : handle_(Valid(handle) ? handle : nullptr) {}
  UniqueResource(UniqueResource&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  UniqueResource& operator=(UniqueResource&& other) noexcept {
    reset(std::exchange(other.handle_, nullptr));
    return *this;
  }
  ~UniqueResource() { reset(); }

  Handle get() const { return handle_; }
  explicit operator bool() const { return handle_ != nullptr; }
  Handle release() { return std::exchange(handle_, nullptr); }
  void reset(Handle handle = nullptr) {
    if (handle_ != nullptr) Closer{}(handle_);
    handle_ = Valid(handle) ? handle : nullptr;
  }

 private:
  static bool Valid(Handle handle) { return reinterpret_cast<LONG_PTR>(handle) != -1; }
  Handle handle_ = nullptr;
};

struct HandleCloser {
  void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
struct SearchCloser {
  void operator()(HANDLE search) const { ::FindClose(search); }
};
struct GdiCloser {
  void operator()(HGDIOBJ object) const { ::DeleteObject(object); }
};
struct WindowCloser {
  void operator()(HWND window) const { ::DestroyWindow(window); }
};
struct MemoryDcCloser {
  void operator()(HDC dc) const { ::DeleteDC(dc); }
};

using UniqueHandle = UniqueResource<HANDLE, HandleCloser>;
using UniqueSearch = UniqueResource<HANDLE, SearchCloser>;
using UniqueWindow = UniqueResource<HWND, WindowCloser>;
using UniqueFont = UniqueResource<HFONT, GdiCloser>;
using UniqueBitmap = UniqueResource<HBITMAP, GdiCloser>;
using UniqueRegion = UniqueResource<HRGN, GdiCloser>;
using UniqueMemoryDc = UniqueResource<HDC, MemoryDcCloser>;

}  // namespace orvane
