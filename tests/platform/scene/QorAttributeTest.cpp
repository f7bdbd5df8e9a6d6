// Every attribute of every kind, by the tables that dialogs, files and the port use.
#include "tests/platform/scene/QorSceneTest.h"
#include "tests/support/DecimalComma.h"

#include <cmath>
#include <set>

namespace {

using Fault = QorAttributeOutcome::Fault;

class Attributes : public QorSceneTest {
protected:
    template <class Visit>
    void ForEach(Visit iVisit) {
        for (const QorRscKind* kind : QorRscKind::GetAll())
            for (const QorAttribute& attribute : kind->attributes) {
                SCOPED_TRACE(kind->name.Str() + "." + attribute.name);
                iVisit(*kind, attribute);
            }
    }

    /// A value that the attribute takes and that is not \p iPresent.
    QorAttributeValue Another(const QorAttribute& iAttribute, const QorAttributeValue& iPresent) {
        switch (iAttribute.type) {
        case QorAttributeType::Integer: {
            const QorAttributeValue more = std::get<int>(iPresent) + 1;
            return iAttribute.rule.Refuse(more).empty() ? more : std::get<int>(iPresent) - 1;
        }
        case QorAttributeType::Real: {
            const QorAttributeValue more = std::get<double>(iPresent) + 0.25;
            return iAttribute.rule.Refuse(more).empty() ? more : std::get<double>(iPresent) - 0.25;
        }
        case QorAttributeType::Boolean:
            return !std::get<bool>(iPresent);
        case QorAttributeType::Text:
            for (const QorUnicodeString& choice : iAttribute.rule.choices)
                if (QorAttributeValue(choice) != iPresent)
                    return choice;
            return QorUnicodeString("another text");
        case QorAttributeType::Color:
            return QorRscColor{0.25, 0.5, 0.75};
        case QorAttributeType::Point:
            return QorMathPoint{1.5, -2.0, 3.25};
        case QorAttributeType::Reference:
            return QorReference(Objects().CreateObject(AnyKindOf(iAttribute)).Get());
        case QorAttributeType::References:
            break;
        }
        return QorReferences{QorReference(Objects().CreateObject(AnyKindOf(iAttribute)).Get()),
                             QorReference(Objects().CreateObject(AnyKindOf(iAttribute)).Get())};
    }

    static QorString AnyKindOf(const QorAttribute& iAttribute) {
        for (const QorString& kind : iAttribute.rule.kinds)
            if (QorRscKind::Find(kind) != nullptr)
                return kind;
        ADD_FAILURE() << "no kind of object fits";
        return {};
    }
};

TEST_F(Attributes, HaveNamesOfTheirOwn) {
    for (const QorRscKind* kind : QorRscKind::GetAll()) {
        std::set<std::string> names{"name", "Name", "Alias", "kind"};
        for (const QorAttribute& attribute : kind->attributes) {
            EXPECT_TRUE(names.insert(attribute.name).second) << kind->name << attribute.name;
            const char* second = attribute.secondName;
            EXPECT_TRUE(second == nullptr || names.insert(second).second) << second;
        }
    }
}

TEST_F(Attributes, ComeBackAsTheyWereSet) {
    ForEach([&](const QorRscKind& iKind, const QorAttribute& iAttribute) {
        const QorRscObject_var object = Objects().CreateObject(iKind.name);
        QorAttributeValue value;
        ASSERT_TRUE(object->GetAttribute(iAttribute.name, value).IsDone());
        EXPECT_EQ(static_cast<QorAttributeType>(value.index()), iAttribute.type);
        EXPECT_EQ(value, iKind.GetDefault(iAttribute));
        const QorAttributeValue other = Another(iAttribute, value);
        EXPECT_NE(other, value);
        const QorAttributeOutcome outcome = object->SetAttribute(iAttribute.name, other);
        EXPECT_TRUE(outcome.IsDone()) << outcome.message;
        ASSERT_TRUE(object->GetAttribute(iAttribute.name, value).IsDone());
        EXPECT_EQ(value, other);
        EXPECT_NE(value, iKind.GetDefault(iAttribute)) << "the default has changed with it";
    });
}

TEST_F(Attributes, TakeTheirOwnDefaults) {
    ForEach([&](const QorRscKind& iKind, const QorAttribute& iAttribute) {
        EXPECT_EQ(iAttribute.rule.Refuse(iKind.GetDefault(iAttribute)), "");
    });
}

TEST_F(Attributes, TellTheDocumentOfChangesAlone) {
    int changes = 0;
    ForEach([&](const QorRscKind& iKind, const QorAttribute& iAttribute) {
        const QorRscObject_var object = Objects().CreateObject(iKind.name);
        const QorAttributeValue other = Another(iAttribute, iAttribute.get(*object));
        Objects().SetChangeListener([&] { ++changes; });
        changes = 0;
        object->SetAttribute(iAttribute.name, other);
        EXPECT_GE(changes, 1);
        changes = 0;
        object->SetAttribute(iAttribute.name, other);
        EXPECT_EQ(changes, 0) << "an equal value is no change";
        Objects().SetChangeListener(nullptr);
    });
}

TEST_F(Attributes, RefuseWhatLiesBeyondTheirRange) {
    int ends = 0;
    const auto check = [&](const QorRscKind& iKind, const QorAttribute& iAttribute, double iEnd,
                           double iOutwards) {
        const QorRscObject_var object = Objects().CreateObject(iKind.name);
        EXPECT_TRUE(object->SetAttribute(iAttribute.name, iEnd).IsDone());
        const QorAttributeValue atEnd = iAttribute.get(*object);
        const double beyond = iEnd + iOutwards;
        const QorAttributeOutcome outcome = object->SetAttribute(iAttribute.name, beyond);
        EXPECT_EQ(outcome.fault, Fault::OutOfRange);
        EXPECT_NE(outcome.message.find(iAttribute.name), std::string::npos) << outcome.message;
        EXPECT_EQ(iAttribute.get(*object), atEnd);
        ++ends;
    };
    ForEach([&](const QorRscKind& iKind, const QorAttribute& iAttribute) {
        if (iAttribute.type != QorAttributeType::Integer &&
            iAttribute.type != QorAttributeType::Real)
            return;
        if (iAttribute.rule.least != std::numeric_limits<double>::lowest())
            check(iKind, iAttribute, iAttribute.rule.least, -1.0);
        if (iAttribute.rule.most != std::numeric_limits<double>::max())
            check(iKind, iAttribute, iAttribute.rule.most, 1.0);
    });
    EXPECT_GT(ends, 60) << "the ranges have gone";
}

TEST_F(Attributes, RefuseNumbersThatAreNone) {
    for (const double number : {std::nan(""), HUGE_VAL, -HUGE_VAL})
        ForEach([&](const QorRscKind& iKind, const QorAttribute& iAttribute) {
            const QorRscObject_var object = Objects().CreateObject(iKind.name);
            const QorAttributeValue before = iAttribute.get(*object);
            QorAttributeValue value = number;
            if (iAttribute.type == QorAttributeType::Color)
                value = QorRscColor{0.0, number, 0.0};
            if (iAttribute.type == QorAttributeType::Point)
                value = QorMathPoint{0.0, 0.0, number};
            EXPECT_FALSE(object->SetAttribute(iAttribute.name, value).IsDone());
            EXPECT_EQ(iAttribute.get(*object), before);
        });
}

TEST_F(Attributes, RefuseOtherTypesAndOtherChoices) {
    ForEach([&](const QorRscKind& iKind, const QorAttribute& iAttribute) {
        const QorRscObject_var object = Objects().CreateObject(iKind.name);
        const bool isText = iAttribute.type == QorAttributeType::Text;
        const QorAttributeValue other =
            isText ? QorAttributeValue(true) : QorAttributeValue(QorUnicodeString("text"));
        EXPECT_EQ(object->SetAttribute(iAttribute.name, other).fault, Fault::WrongType);
        if (iAttribute.rule.choices.empty())
            return;
        EXPECT_EQ(object->SetAttribute(iAttribute.name, QorUnicodeString("none of them")).fault,
                  Fault::OutOfRange);
    });
}

TEST_F(Attributes, SayWhyTheyRefuse) {
    const QorRscObject_var shooting = Objects().CreateObject("shooting");
    const auto message = [&](const char* iName, const QorAttributeValue& iValue) {
        return shooting->SetAttribute(iName, iValue).message;
    };
    const DecimalComma comma;
    EXPECT_EQ(message("Reflections", 21),
              "the attribute \"Reflections\" must lie between 0 and 20");
    EXPECT_EQ(message("AmbientFactor", 1.5),
              "the attribute \"AmbientFactor\" must lie between 0 and 1");
    EXPECT_EQ(message("StepFrame", 0), "the attribute \"StepFrame\" must be at least 1");
    EXPECT_EQ(message("Width", 2.5), "the attribute \"Width\" must be an integer");
    EXPECT_EQ(message("Wdith", 2), "a shooting has no attribute \"Wdith\"");
    EXPECT_EQ(message("Camera", QorReference(shooting.Get())),
              "the attribute \"Camera\" must be of kind \"camera\"");
    EXPECT_EQ(message("Animation", QorReference(document.Get())),
              "the attribute \"Animation\" must be of kind \"experiment\", \"track\" or "
              "\"sequence\"");
    EXPECT_EQ(shooting->SetAttribute("Camera", QorReference(shooting.Get())).fault,
              Fault::WrongKind);
}

TEST_F(Attributes, TakeWholeNumbersOfEitherType) {
    const QorRscObject_var shooting = Objects().CreateObject("shooting");
    EXPECT_TRUE(shooting->SetAttribute("Width", 640.0).IsDone());
    EXPECT_TRUE(shooting->SetAttribute("Duration", 3).IsDone());
    EXPECT_EQ(QorQuery<QorIRscShooting>(shooting)->GetWidth(), 640);
    EXPECT_EQ(QorQuery<QorIRscShooting>(shooting)->GetDuration(), 3.0);
    EXPECT_EQ(shooting->SetAttribute("Width", 1e12).fault, Fault::WrongType);
}

TEST_F(Attributes, TellFloatsAsTheyWereTyped) {
    for (const double number : {0.1, 0.7, 3.3, 1e-7, 123456.7}) {
        const QorRscObject_var shooting = Objects().CreateObject("shooting");
        EXPECT_TRUE(shooting->SetAttribute("GlowIntensity", number).IsDone());
        QorAttributeValue value;
        ASSERT_TRUE(shooting->GetAttribute("GlowIntensity", value).IsDone());
        EXPECT_EQ(std::get<double>(value), number);
    }
}

TEST_F(Attributes, AnswerToTheWholeNameOfTheirGetter) {
    const QorRscObject_var light = Objects().CreateObject("light");
    EXPECT_TRUE(light->SetAttribute("IsActive", false).IsDone());
    QorAttributeValue value;
    EXPECT_TRUE(light->GetAttribute("Active", value).IsDone());
    EXPECT_EQ(value, QorAttributeValue(false));
}

} // namespace
