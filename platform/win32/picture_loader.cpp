#include "platform/win32/picture_loader.h"

#include "base/runtime_error.h"
#include "platform/win32/text.h"

namespace orvane {
namespace {

void Require(HRESULT result, const std::string& path) {
  if (FAILED(result)) throw RuntimeError(Fault::kInvalidPicture, "Loading " + path);
}

}  // namespace

ComPtr<IWICBitmapSource> PictureLoader::Open(const std::string& path) {
  if (!factory_) {
    IWICImagingFactory* factory = nullptr;
    Require(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                               reinterpret_cast<void**>(&factory)),
            path);
    factory_.reset(factory);
  }
  IWICBitmapDecoder* decoder = nullptr;
  Require(factory_->CreateDecoderFromFilename(ToWide(path).c_str(), nullptr, GENERIC_READ,
                                              WICDecodeMetadataCacheOnDemand, &decoder),
          path);
  const ComPtr<IWICBitmapDecoder> decoder_owner(decoder);
  IWICBitmapFrameDecode* frame = nullptr;
  Require(decoder->GetFrame(0, &frame), path);
  const ComPtr<IWICBitmapFrameDecode> frame_owner(frame);
  IWICFormatConverter* converter = nullptr;
  Require(factory_->CreateFormatConverter(&converter), path);
  ComPtr<IWICBitmapSource> converted(converter);
  Require(converter->Initialize(frame, GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone, nullptr, 0,
                                WICBitmapPaletteTypeCustom),
          path);
  return converted;
}

Picture PictureLoader::Load(const std::string& path) {
  const ComPtr<IWICBitmapSource> source = Open(path);
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
