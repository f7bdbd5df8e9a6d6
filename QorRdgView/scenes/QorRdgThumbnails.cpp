#include "scenes/QorRdgThumbnails.h"

#include "platform/system/QorPaths.h"
#include "scenes/QorRdgThumbnailFile.h"
#include "scenes/QorRdgWorkers.h"

#include <algorithm>
#include <map>

/// Outlives its owner as long as jobs run; touched on the user-interface thread alone.
struct QorRdgThumbnails::Target {
    Receiver receiver; ///< empty once the owner is gone
};

namespace {

/// The file name, under which a thumbnail is kept.
std::string NameOf(const QorUnicodeString& iImage) {
    QorUnicodeString directory;
    QorUnicodeString name;
    QorSplitPath(iImage, directory, name);
    return name.Str();
}

} // namespace

QorRdgThumbnails::QorRdgThumbnails(Receiver iReceiver) : target(std::make_shared<Target>()) {
    target->receiver = std::move(iReceiver);
}

QorRdgThumbnails::~QorRdgThumbnails() {
    target->receiver = {};
}

void QorRdgThumbnails::Request(int iRequest, const QorUnicodeString& iImage) {
    if (!iImage.IsNull())
        noted.push_back({iRequest, iImage});
}

void QorRdgThumbnails::Start() {
    if (noted.empty())
        return;
    // Jobs in the order of the first picture of their name; within a job all of that name in order.
    std::vector<std::vector<Noted>> jobs;
    std::map<std::string, std::size_t> jobOf;
    for (Noted& one : noted) {
        const auto [place, added] = jobOf.emplace(NameOf(one.image), jobs.size());
        if (added)
            jobs.emplace_back();
        jobs[place->second].push_back(std::move(one));
    }
    noted.clear();
    const QorUnicodeString directory = QorRdgThumbnailFile::GetDirectory();
    for (std::vector<Noted>& job : jobs) {
        QorRdgWorkers::Run([to = target, job = std::move(job), directory] {
            std::vector<std::pair<int, QorPixelImage_var>> made;
            for (const Noted& one : job)
                made.emplace_back(one.request,
                                  QorRdgThumbnailFile::ReadOrMake(directory, one.image));
            return [to, made = std::move(made)] {
                const std::shared_ptr<Target> alive = to;
                for (const auto& [request, thumbnail] : made)
                    if (thumbnail && alive->receiver)
                        alive->receiver(request, thumbnail);
            };
        });
    }
}

std::pair<int, int> QorRdgThumbnails::GetSize(int iWidth, int iHeight) {
    const auto other = [](int iOther, int iLonger) {
        const auto scaled = static_cast<int>(static_cast<long long>(iOther) * side / iLonger);
        return std::max(scaled - scaled % 2, 2);
    };
    if (iWidth > iHeight)
        return {side, other(iHeight, iWidth)};
    return {other(iWidth, iHeight), side};
}
