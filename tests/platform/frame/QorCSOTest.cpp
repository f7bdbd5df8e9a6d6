#include "platform/frame/QorCSO.h"

#include "platform/component/QorExtension.h"
#include "platform/frame/QorDocument.h"
#include "tests/support/QorTestApplication.h"

namespace {

class QorITestThing : public QorInterface {
    QorDeclareInterface(QorITestThing)
    virtual int GetNumber() const = 0;
};

class Thing : public QorImplements<QorBaseUnknown, QorITestThing> {
public:
    explicit Thing(int iNumber) : number(iNumber) {}

    [[nodiscard]] int GetNumber() const override { return number; }

protected:
    ~Thing() override = default;

private:
    int number;
};

class ModifiedCounter : public QorEventSubscriber {
public:
    explicit ModifiedCounter(QorCSO& iSelection) {
        iSelection.GetCallbackManager()->AddCallback(this, QorCSO::CSO_MODIFIED,
                                                     &ModifiedCounter::ModifiedCB);
    }

    int count = 0;

private:
    void
    ModifiedCB(QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        ++count;
    }
};

QorPathElement_var PathOf(std::initializer_list<QorBaseUnknown*> iObjects) {
    auto path = QorMake<QorPathElement>();
    for (QorBaseUnknown* object : iObjects)
        path->AddChildElement(object);
    return path;
}

class Selection : public QorTestApplication {};

TEST_F(Selection, CountsFromOne) {
    const auto selection = QorMake<QorCSO>();
    const auto first = QorMake<QorBaseUnknown>();
    const auto second = QorMake<QorBaseUnknown>();
    selection->AddElement(first.Get(), 1);
    selection->AddElement(second.Get(), 1);
    EXPECT_EQ(selection->GetSize(), 2);
    EXPECT_EQ(selection->GetElement(1), first.Get());
    EXPECT_EQ(selection->GetElement(2), second.Get());
    EXPECT_EQ(selection->GetElement(0), nullptr);
    EXPECT_EQ(selection->GetElement(3), nullptr);
}

TEST_F(Selection, HoldsAnElementOnceUnlessAskedOtherwise) {
    const auto selection = QorMake<QorCSO>();
    ModifiedCounter modified(*selection);
    const auto object = QorMake<QorBaseUnknown>();
    selection->AddElement(object.Get(), 1);
    selection->AddElement(object.Get(), 1);
    selection->AddElement(nullptr, 1);
    EXPECT_EQ(selection->GetSize(), 1);
    EXPECT_EQ(modified.count, 1);
    selection->AddElement(object.Get(), 0);
    EXPECT_EQ(selection->GetSize(), 2);
    selection->RemoveElement(object.Get());
    EXPECT_EQ(selection->GetSize(), 0);
    EXPECT_EQ(modified.count, 3);
    selection->Empty();
    EXPECT_EQ(modified.count, 3) << "it was empty";
}

TEST_F(Selection, TakesManyElementsInOneChange) {
    const auto selection = QorMake<QorCSO>();
    ModifiedCounter modified(*selection);
    const auto first = QorMake<QorBaseUnknown>();
    const auto second = QorMake<QorBaseUnknown>();
    selection->SetElements({first, nullptr, second});
    EXPECT_EQ(selection->GetSize(), 2);
    EXPECT_EQ(selection->GetElement(2), second.Get());
    EXPECT_EQ(modified.count, 1);
    selection->SetElements({first, second});
    EXPECT_EQ(modified.count, 1) << "it holds them already";
    selection->SetElements({second, first});
    EXPECT_EQ(modified.count, 2);
    selection->SetElements({});
    EXPECT_EQ(selection->GetSize(), 0);
    EXPECT_EQ(modified.count, 3);
}

TEST_F(Selection, KnowsEqualPathsByTheirObjects) {
    const auto selection = QorMake<QorCSO>();
    const auto product = QorMake<QorBaseUnknown>();
    const auto part = QorMake<QorBaseUnknown>();
    selection->AddElement(PathOf({product.Get(), part.Get()}).Get(), 1);
    selection->AddElement(PathOf({product.Get(), part.Get()}).Get(), 1);
    selection->AddElement(PathOf({part.Get()}).Get(), 1);
    EXPECT_EQ(selection->GetSize(), 2);
}

TEST_F(Selection, KeepsItsElementsAlive) {
    const auto selection = QorMake<QorCSO>();
    const long before = Thing::MetaObject().GetLiveCount();
    selection->AddElement(QorMake<Thing>(1).Get(), 1);
    EXPECT_EQ(Thing::MetaObject().GetLiveCount(), before + 1);
    selection->Empty();
    EXPECT_EQ(Thing::MetaObject().GetLiveCount(), before);
}

class Path : public QorTestApplication {};

TEST_F(Path, FindsTheFirstObjectThatOffersAnInterface) {
    const auto plain = QorMake<QorBaseUnknown>();
    const auto first = QorMake<Thing>(1);
    const auto second = QorMake<Thing>(2);
    const auto path = PathOf({plain.Get(), first.Get(), second.Get()});
    const auto found = path->FindInterface<QorITestThing>();
    ASSERT_TRUE(found);
    EXPECT_EQ(found->GetNumber(), 1);
    EXPECT_EQ(path->GetLeaf(), static_cast<QorBaseUnknown*>(second.Get()));
    EXPECT_FALSE(PathOf({plain.Get()})->FindInterface<QorITestThing>());
}

TEST_F(Path, AnswersNullBeyondItsEnds) {
    const auto path = QorMake<QorPathElement>();
    EXPECT_EQ(path->GetLeaf(), nullptr);
    EXPECT_EQ(path->GetElement(-1), nullptr);
    path->AddChildElement(nullptr);
    EXPECT_EQ(path->GetSize(), 0);
    EXPECT_EQ(path->FindInterface(QorITestThing::ClassId(), nullptr), E_FAIL);
}

TEST_F(Path, OfAPlainDocumentHoldsTheObjectAlone) {
    const auto document = QorMake<QorDocument>("gear");
    const auto object = QorMake<Thing>(7);
    const auto path = document->BuildPathElement(object.Get());
    ASSERT_TRUE(path);
    EXPECT_EQ(path->GetSize(), 1);
    EXPECT_EQ(path->FindInterface<QorITestThing>()->GetNumber(), 7);
    EXPECT_FALSE(document->BuildPathElement(nullptr));
    EXPECT_EQ(document->GetName(), "gear");
}

} // namespace
