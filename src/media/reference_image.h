#pragma once
// A decoded picture shared by the image objects, resources and SWF images
// that use it. Built-in pictures are shared without a copy.
#include <cstddef>

#include "platform/image_codec.h"
#include "platform/zo_reference.h"

/// A counted decoded picture (straight RGBA).
class ZoReferenceImage : public ZoReferenceClass {
  public:
    /// Takes ownership of a picture decoded from a file.
    explicit ZoReferenceImage(ZoDecodedImage picture) noexcept
        : owned_(std::move(picture)), picture_(&owned_) {}
    /// Refers to a picture that outlives every image (the built-in ones).
    explicit ZoReferenceImage(const ZoDecodedImage* shared) noexcept : picture_(shared) {}

    const ZoDecodedImage& Picture() const noexcept { return *picture_; }
    int32_t GetWidth() const noexcept { return picture_->width; }
    int32_t GetHeight() const noexcept { return picture_->height; }
    /// The colour the file itself marks transparent, or kZoNoColour.
    COLORREF GetTransparentColour() const noexcept { return picture_->transparentColour; }
    bool HasAlpha() const noexcept { return picture_->hasAlpha; }
    /// The colour of the top-left pixel, or kZoNoColour for an empty picture.
    COLORREF GetCornerColour() const noexcept {
        return picture_->width > 0 && picture_->height > 0 ? picture_->PixelColour(0, 0)
                                                           : kZoNoColour;
    }
    /// Bytes of pixels held.
    size_t GetMemorySize() const noexcept { return sizeof(ZoDecodedImage) + picture_->rgba.size(); }

  private:
    ZoDecodedImage owned_;
    const ZoDecodedImage* picture_;
};
