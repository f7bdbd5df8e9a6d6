#include "platform/scene/QorAttributeTraits.h"
#include "platform/scene/QorRscObject.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

/// The shortest text that reads back as the number, without regard to the locale.
template <class Number>
std::string ToText(Number iNumber) {
    std::array<char, 64> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), iNumber);
    return {text.data(), end.ptr};
}

/// "a", "b" or "c".
template <class Text>
std::string Enumerate(const std::vector<Text>& iTexts) {
    std::string text;
    for (std::size_t i = 0; i < iTexts.size(); ++i) {
        if (i > 0)
            text += i + 1 < iTexts.size() ? ", " : " or ";
        text += "\"" + iTexts[i].Str() + "\"";
    }
    return text;
}

/// Says of each type of values why a rule refuses it; an empty text when it does not.
struct Refusal {
    const QorAttributeRule& rule;

    std::string operator()(double iNumber) const {
        if (!std::isfinite(iNumber))
            return "must be a number";
        return iNumber < rule.least || iNumber > rule.most ? OutOfRange() : "";
    }

    std::string operator()(int iNumber) const { return (*this)(static_cast<double>(iNumber)); }

    std::string operator()(bool /*iValue*/) const { return {}; }

    std::string operator()(const QorUnicodeString& iText) const {
        const bool isTaken =
            rule.choices.empty() || std::ranges::find(rule.choices, iText) != rule.choices.end();
        return isTaken ? "" : "must be " + Enumerate(rule.choices);
    }

    std::string operator()(const QorRscColor& iColor) const {
        return FirstOf({(*this)(iColor.red), (*this)(iColor.green), (*this)(iColor.blue)});
    }

    std::string operator()(const QorMathPoint& iPoint) const {
        return FirstOf({(*this)(iPoint.x), (*this)(iPoint.y), (*this)(iPoint.z)});
    }

    std::string operator()(const QorReference& iObject) const {
        return iObject == nullptr || IsOfKind(*iObject) ? "" : OtherKind();
    }

    std::string operator()(const QorReferences& iObjects) const {
        const bool areTaken = std::ranges::all_of(iObjects, [this](const QorReference& iObject) {
            return iObject != nullptr && IsOfKind(*iObject);
        });
        return areTaken ? "" : OtherKind();
    }

private:
    [[nodiscard]] static std::string FirstOf(std::initializer_list<std::string> iReasons) {
        for (const std::string& reason : iReasons)
            if (!reason.empty())
                return reason;
        return {};
    }

    [[nodiscard]] bool IsOfKind(QorBaseUnknown& iObject) const {
        const QorRscObject* object = QorRscObject::From(&iObject);
        const QorString kind =
            object != nullptr ? object->GetKind().name : QorString(QorAttributeRule::productNode);
        return std::ranges::find(rule.kinds, kind) != rule.kinds.end();
    }

    [[nodiscard]] std::string OtherKind() const {
        return "must be of kind " + Enumerate(rule.kinds);
    }

    [[nodiscard]] std::string OutOfRange() const {
        if (rule.most == std::numeric_limits<double>::max())
            return "must be at least " + ToText(rule.least);
        return "must lie between " + ToText(rule.least) + " and " + ToText(rule.most);
    }
};

} // namespace

const char* QorAttributeTypeName(QorAttributeType iType) {
    static constexpr std::array names{"an integer", "a number",         "true or false",
                                      "a text",     "a colour",         "a point",
                                      "an object",  "a list of objects"};
    return names.at(static_cast<std::size_t>(iType));
}

QorAttributeRule QorAttributeRule::AtLeast(double iLeast) {
    QorAttributeRule rule;
    rule.least = iLeast;
    return rule;
}

QorAttributeRule QorAttributeRule::Between(double iLeast, double iMost) {
    QorAttributeRule rule = AtLeast(iLeast);
    rule.most = iMost;
    return rule;
}

QorAttributeRule QorAttributeRule::OneOf(std::vector<QorUnicodeString> iChoices) {
    QorAttributeRule rule;
    rule.choices = std::move(iChoices);
    return rule;
}

QorAttributeRule QorAttributeRule::OfKind(std::vector<QorString> iKinds) {
    QorAttributeRule rule;
    rule.kinds = std::move(iKinds);
    return rule;
}

std::string QorAttributeRule::Refuse(const QorAttributeValue& iValue) const {
    return std::visit(Refusal{*this}, iValue);
}

double QorWidened(float iValue) {
    const std::string text = ToText(iValue);
    double value = iValue;
    if (std::isfinite(iValue))
        std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}
