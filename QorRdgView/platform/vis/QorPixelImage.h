#pragma once

#include "platform/component/QorBaseUnknown.h"
#include "platform/component/QorHandle.h"
#include "platform/text/QorString.h"

#include <cstdint>
#include <memory>
#include <vector>

/// A picture: 8 bits a channel, sRGB, RGB or RGBA (straight alpha), top row first, rows without
/// gaps. The pixels are immutable and shared: a copy costs nothing, and a worker may read them on
/// any thread.
class QorPixelImage : public QorBaseUnknown {
    QorDeclareClass(QorPixelImage)

    using Pixels = std::vector<std::uint8_t>;

    QorPixelImage() = default;
    /// Takes the pixels over: iWidth × iHeight × iChannels bytes (3 or 4). Anything else gives an
    /// empty picture.
    QorPixelImage(int iWidth, int iHeight, int iChannels, std::shared_ptr<const Pixels> iPixels);
    /// Becomes a picture of the same pixels.
    QorPixelImage(const QorPixelImage& iOther);
    QorPixelImage& operator=(const QorPixelImage& iOther);

    [[nodiscard]] int GetWidth() const { return width; }

    [[nodiscard]] int GetHeight() const { return height; }

    void GetSize(int& oWidth, int& oHeight) const;

    [[nodiscard]] int GetChannels() const { return channels; }

    [[nodiscard]] bool IsEmpty() const { return width == 0; }

    [[nodiscard]] const std::shared_ptr<const Pixels>& GetPixels() const { return pixels; }

    /// Identity of the pixels: equal for pictures that share them, never used again.
    [[nodiscard]] std::uint64_t GetContentId() const { return contentId; }

    /// How large the picture is meant to be seen, in pixels an inch; 0 when it is not known. Files
    /// that can hold it do.
    [[nodiscard]] double GetPixelsPerInch() const { return pixelsPerInch; }

    /// Anything but a positive number makes it unknown.
    void SetPixelsPerInch(double iPixels);

    /// Reads a picture file through the host's picture service; null when it cannot be read. The
    /// reference belongs to the caller.
    [[nodiscard]] static QorPixelImage* CreateFromFile(const QorUnicodeString& iPath);
    /// The same for a picture that is shown much smaller; see QorPictureService::ReadReduced.
    [[nodiscard]] static QorPixelImage*
    CreateReducedFromFile(const QorUnicodeString& iPath, int iSide, int& oWidth, int& oHeight);
    /// Writes the picture under a format keyword ("PNG", "TIFFPB" …): beside the target, then
    /// renamed. 0, or what the service answers on failure. Format keywords: see QorPictureService.
    /// \p oError, if it is wanted, says why then.
    [[nodiscard]] int WriteToFile(const QorString& iFormat,
                                  const QorUnicodeString& iPath,
                                  QorUnicodeString* oError = nullptr) const;
    /// A new picture of that size, smoothly resampled; null when a side is not positive or memory
    /// is short.
    [[nodiscard]] QorPixelImage* Resize(int iWidth, int iHeight) const;
    /// A new picture of the columns iX1..iX2 from the left and rows iY1..iY2 from the bottom (the
    /// upper limits excluded), clipped to the picture and as dense; null when nothing is left.
    [[nodiscard]] QorPixelImage* ExtractRegion(int iX1, int iY1, int iX2, int iY2) const;

protected:
    ~QorPixelImage() override = default;

private:
    int width = 0;
    int height = 0;
    int channels = 0;
    std::shared_ptr<const Pixels> pixels;
    std::uint64_t contentId = 0;
    double pixelsPerInch = 0.0;
};

QorDeclareHandle(QorPixelImage);
