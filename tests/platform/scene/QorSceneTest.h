#pragma once

#include "platform/scene/QorRscContainer.h"
#include "platform/scene/QorRscValues.h"
#include "tests/support/QorTestApplication.h"

#include <string>
#include <vector>

/// An animation of a room above: a kind that this room knows by name only.
class QorTestTrack : public QorRscObject {
    QorDeclareClass(QorTestTrack)

    QorTestTrack() = default;

    [[nodiscard]] const QorRscKind& GetKind() const override { return Kind(); }

    [[nodiscard]] static const QorRscKind& Kind();

protected:
    ~QorTestTrack() override = default;
};

/// A document and what it holds.
class QorSceneTest : public QorTestApplication {
protected:
    QorSceneTest() { QorRscKind::Register(QorTestTrack::Kind()); }

    void TearDown() override {
        document.Reset();
        QorTestApplication::TearDown();
    }

    [[nodiscard]] QorRscContainer& Objects() const { return *QorRscContainer::Of(document.Get()); }

    template <class I>
    [[nodiscard]] QorVar<I> Create(const char* iKind, const char* iAlias = "") const {
        return QorQuery<I>(Objects().CreateObject(iKind, iAlias));
    }

    QorVar<QorDocument> document = QorMake<QorDocument>("document");
};

/// Writes down, as "EVENT alias", what a publisher of model events dispatches.
class QorModelRecorder : public QorEventSubscriber {
public:
    void Listen(QorCallbackManager* iConnexion) {
        for (const char* event : {"QorCreate", "QorModify", "QorRemove"})
            iConnexion->AddCallback(this, event, &QorModelRecorder::EventCB);
    }

    [[nodiscard]] std::vector<std::string> Take() { return std::exchange(lines, {}); }

private:
    void EventCB(QorEventName iEvent,
                 QorBaseUnknown* /*iPublisher*/,
                 QorNotification* iNotification,
                 QorSubscriberData /*iData*/,
                 QorCallbackId /*iCookie*/) {
        const auto* about = dynamic_cast<QorModelNotification*>(iNotification);
        const auto* object = about != nullptr ? QorRscObject::From(about->GetObject()) : nullptr;
        lines.push_back(iEvent.GetText() + " " +
                        (object != nullptr ? object->GetAlias().Str() : "?"));
    }

    std::vector<std::string> lines;
};

using Lines = std::vector<std::string>;
