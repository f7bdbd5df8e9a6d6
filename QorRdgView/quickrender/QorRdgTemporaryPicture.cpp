#include "quickrender/QorRdgTemporaryPicture.h"

#include "platform/system/QorPaths.h"
#include "scenes/QorRdgWorkers.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A name in the private temporary directory that no other background of this process or another
/// has.
QorUnicodeString NewTemporaryName() {
    static std::atomic<unsigned> last = 0;
    const QorUnicodeString directory = QorGetTempDirectory();
    if (directory.IsNull())
        return {};
    return directory.Str() + "/QorRdgBackground" + std::to_string(::getpid()) + "_" +
           std::to_string(++last) + ".tif";
}

} // namespace

QorRdgTemporaryPicture::QorRdgTemporaryPicture(const QorPixelImage& iPicture)
    : path(NewTemporaryName()), isWanted(std::make_shared<std::atomic<bool>>(true)) {
    if (!path.IsNull())
        Write(iPicture);
}

/// A job that is dropped breaks its promise.
void QorRdgTemporaryPicture::Write(const QorPixelImage& iPicture) {
    const auto promise = std::make_shared<std::promise<bool>>();
    written = promise->get_future().share();
    QorRdgWorkers::RunAside(
        [promise, wanted = isWanted, target = path,
         image = QorMake<QorPixelImage>(iPicture)]() -> QorRdgWorkers::Delivery {
            const bool isWhole = *wanted && image->WriteToFile("TIFF", target) == 0;
            if (isWhole)
                ::chmod(target.CastToCharPtr(), S_IRUSR | S_IWUSR);
            if (!*wanted)
                ::unlink(target.CastToCharPtr()); // nobody else does now
            promise->set_value(isWhole);
            return {};
        });
}

QorRdgTemporaryPicture::~QorRdgTemporaryPicture() {
    *isWanted = false;
    if (!path.IsNull())
        ::unlink(path.CastToCharPtr());
}

QorUnicodeString QorRdgTemporaryPicture::GetPath() const {
    try {
        if (written.valid() && written.get())
            return path;
    } catch (const std::future_error&) { // the program ends
    }
    return {};
}
