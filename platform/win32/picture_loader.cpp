#include "base/runtime_error.h"
#include "platform/win32/text.h"
#include "platform/win32/window_system.h"
#include "platform/win32/windows_api.h"

#include <memory>
#include <objbase.h>
#include <wincodec.h>

namespace orvane {
namespace {

struct ComRelease {
  void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface>
using ComPtr = std::unique_ptr<Interface, ComRelease>;

/// COM for as long as a picture is loaded. A thread that has it already in another mode serves as well.
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

void Require(HRESULT result, const std::string& path) {
  if (FAILED(result)) throw RuntimeError(Fault::kInvalidPicture, "Loading " + path);
}

ComPtr<IWICBitmapSource> OpenPicture(IWICImagingFactory& factory, const std::string& path) {
  IWICBitmapDecoder* decoder = nullptr;
  Require(factory.CreateDecoderFromFilename(ToWide(path).c_str(), nullptr, GENERIC_READ,
                                            WICDecodeMetadataCacheOnDemand, &decoder),
          path);
  const ComPtr<IWICBitmapDecoder> decoder_owner(decoder);
  IWICBitmapFrameDecode* frame = nullptr;
  Require(decoder->GetFrame(0, &frame), path);
  const ComPtr<IWICBitmapFrameDecode> frame_owner(frame);
  IWICFormatConverter* converter = nullptr;
  Require(factory.CreateFormatConverter(&converter), path);
  ComPtr<IWICBitmapSource> converted(converter);
  Require(converter->Initialize(frame, GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone, nullptr, 0,
                                WICBitmapPaletteTypeCustom),
          path);
  return converted;
}

}  // namespace

Picture Win32WindowSystem::LoadPicture(const std::string& path) {
  const ComScope com;
  IWICImagingFactory* factory = nullptr;
  Require(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                             reinterpret_cast<void**>(&factory)),
          path);
  const ComPtr<IWICImagingFactory> factory_owner(factory);
  const ComPtr<IWICBitmapSource> source = OpenPicture(*factory, path);
  UINT width = 0;
  UINT height = 0;
  Require(source->GetSize(&width, &height), path);
  if (!IsPictureSize(width, height)) Require(E_INVALIDARG, path);
  auto picture = std::make_shared<PictureData>();
  picture->width = static_cast<int>(width);
  picture->height = static_cast<int>(height);
  picture->pixels.resize(static_cast<std::size_t>(width) * height);
  Require(source->CopyPixels(nullptr, width * 4, width * height * 4,
                             reinterpret_cast<BYTE*>(picture->pixels.data())),
          path);
  return picture;
}

}  // namespace orvane
