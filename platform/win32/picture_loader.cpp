#include "platform/win32/picture_loader.h"

#include "base/runtime_error.h"
#include "platform/win32/text.h"

#include <array>

namespace orvane {
namespace {

void Require(HRESULT result, const std::string& path) {
  if (FAILED(result)) throw RuntimeError(Fault::kInvalidPicture, "Loading " + path);
}

}  // namespace

// By the file's first bytes. To have the system choose one of all decoders that it has takes longer than the
// picture.
ComPtr<IWICBitmapDecoder> PictureLoader::DecoderOf(const std::string& path) {
  IWICStream* stream = nullptr;
  Require(factory_->CreateStream(&stream), path);
  const ComPtr<IWICStream> stream_owner(stream);
  Require(stream->InitializeFromFilename(ToWide(path).c_str(), GENERIC_READ), path);
  std::array<char, 2> start{};
  ULONG had = 0;
  Require(stream->Read(start.data(), static_cast<ULONG>(start.size()), &had), path);
  Require(stream->Seek({}, STREAM_SEEK_SET, nullptr), path);
  const bool bitmap = start == std::array{'B', 'M'};
  IWICBitmapDecoder* decoder = nullptr;
  Require(::CoCreateInstance(bitmap ? CLSID_WICBmpDecoder : CLSID_WICPngDecoder, nullptr,
                             CLSCTX_INPROC_SERVER, IID_IWICBitmapDecoder, reinterpret_cast<void**>(&decoder)),
          path);
  ComPtr<IWICBitmapDecoder> owner(decoder);
  Require(decoder->Initialize(stream, WICDecodeMetadataCacheOnDemand), path);
  return owner;
}

ComPtr<IWICBitmapSource> PictureLoader::Open(const std::string& path) {
  if (!factory_) {
    IWICImagingFactory* factory = nullptr;
    Require(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                               reinterpret_cast<void**>(&factory)),
            path);
    factory_.reset(factory);
  }
  const ComPtr<IWICBitmapDecoder> decoder = DecoderOf(path);
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
