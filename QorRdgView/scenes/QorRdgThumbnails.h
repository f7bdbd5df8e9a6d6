#pragma once

#include "platform/vis/QorPixelImage.h"

#include <functional>
#include <memory>
#include <vector>

/// Makes thumbnails of picture files on worker threads: one job a file name, its pictures in the
/// order in which they were asked for. A thumbnail is kept as a JPEG file of the picture's name in
/// `.icons` of the private temporary directory, so that pictures of the same name in two
/// directories share one: the first one's.
///
/// Belongs to the user-interface thread, where results arrive in a posted turn (QorRdgWorkers).
/// Without an application they arrive inside Start.
class QorRdgThumbnails {
public:
    /// Told of a thumbnail, by the number of its request; not of pictures that cannot be read.
    using Receiver = std::function<void(int iRequest, const QorPixelImage_var& iThumbnail)>;

    explicit QorRdgThumbnails(Receiver iReceiver);
    /// Results that have not arrived yet are dropped.
    ~QorRdgThumbnails();
    QorRdgThumbnails(const QorRdgThumbnails&) = delete;
    QorRdgThumbnails& operator=(const QorRdgThumbnails&) = delete;

    /// Notes a picture; Start begins with all that were noted. An empty path is ignored.
    void Request(int iRequest, const QorUnicodeString& iImage);
    void Start();

    /// Longer side of a thumbnail in pixels.
    static constexpr int side = 92;
    /// Width and height of the thumbnail of a picture: its longer side as above, the other in
    /// proportion, even, and at least 2.
    [[nodiscard]] static std::pair<int, int> GetSize(int iWidth, int iHeight);

private:
    struct Target;

    struct Noted {
        int request;
        QorUnicodeString image;
    };

    std::shared_ptr<Target> target;
    std::vector<Noted> noted;
};
