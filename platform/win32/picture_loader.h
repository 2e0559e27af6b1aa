#pragma once

#include "platform/picture.h"
#include "platform/win32/windows_api.h"

#include <memory>
#include <objbase.h>
#include <string>
#include <wincodec.h>

namespace orvane {

struct ComRelease {
  void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface>
using ComPtr = std::unique_ptr<Interface, ComRelease>;

/// COM on this thread. A thread that has it already in another mode serves as well.
class ComScope {
 public:
  ComScope() : result_(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ~ComScope() {
    if (SUCCEEDED(result_)) ::CoUninitialize();
  }
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;

 private:
  HRESULT result_;
};

/// Reads picture files by the system's decoders. What it needs of the system is had once and kept: having
/// it anew for each picture took as long as the picture itself.
class PictureLoader {
 public:
  /// Throws RuntimeError kInvalidPicture.
  Picture Load(const std::string& path);

 private:
  ComPtr<IWICBitmapDecoder> DecoderOf(const std::string& path);
  ComPtr<IWICBitmapSource> Open(const std::string& path);

  ComScope com_;
  ComPtr<IWICImagingFactory> factory_;
};

}  // namespace orvane
