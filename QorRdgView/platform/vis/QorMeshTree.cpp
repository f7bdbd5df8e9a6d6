#include "platform/vis/QorMeshTree.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace {

/// Makes the trees that are asked for, one after another, until the process ends.
class TreeMaker {
public:
    TreeMaker() = default;
    TreeMaker(const TreeMaker&) = delete;
    TreeMaker& operator=(const TreeMaker&) = delete;

    ~TreeMaker() {
        {
            const std::scoped_lock lock(mutex);
            stop = true;
        }
        changed.notify_all();
        if (worker.joinable())
            worker.join();
    }

    void Ask(std::weak_ptr<const QorMeshTree> iSlot) {
        {
            const std::scoped_lock lock(mutex);
            asked.push_back(std::move(iSlot));
            if (!worker.joinable())
                worker = std::thread([this] { Work(); });
        }
        changed.notify_all();
    }

private:
    void Work() {
        std::unique_lock lock(mutex);
        while (!stop) {
            if (asked.empty()) {
                changed.wait(lock);
                continue;
            }
            // A mesh that has gone meanwhile needs none.
            const std::shared_ptr<const QorMeshTree> slot = asked.front().lock();
            asked.pop_front();
            lock.unlock();
            if (slot)
                slot->MakeTree(&stop);
            lock.lock();
        }
    }

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::weak_ptr<const QorMeshTree>> asked;
    std::atomic<bool> stop = false;
    std::thread worker;
};

} // namespace

double QorMeshTree::Intersect(const QorMathRay& iRay, double iFarthest) const {
    if (const std::shared_ptr<const QorMeshHierarchy> made = std::atomic_load(&tree))
        return made->Intersect(iRay, iFarthest);
    if (data->indices.size() / 3 < large) {
        MakeTree();
        return std::atomic_load(&tree)->Intersect(iRay, iFarthest);
    }
    if (!isWanted.exchange(true)) {
        static TreeMaker maker;
        maker.Ask(weak_from_this());
    }
    return QorMeshHierarchy::IntersectAll(*data, iRay, iFarthest);
}

void QorMeshTree::MakeTree(const std::atomic<bool>* iStop) const {
    if (HasTree())
        return;
    auto made = std::make_shared<const QorMeshHierarchy>(*data, iStop);
    // Two threads may have made one; either is as good.
    if (iStop == nullptr || !*iStop)
        std::atomic_store(&tree, std::shared_ptr<const QorMeshHierarchy>(std::move(made)));
}
