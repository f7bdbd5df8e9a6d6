#include "platform/dialog/QorDlgSpinner.h"

#include "platform/text/QorNumberFormat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

QorImplementClass(QorDlgSpinner, QorDialog)

namespace {

constexpr std::string_view digits = "0123456789";

/// What stands before and after the number in a shown text: "R " and " mm" of "R 5.0 mm".
std::pair<std::string_view, std::string_view> Surroundings(std::string_view iShown) {
    const std::size_t first = std::min(iShown.find_first_of("+-.0123456789"), iShown.size());
    const std::size_t last = iShown.find_last_of(digits);
    const std::string_view after = last == std::string_view::npos ? "" : iShown.substr(last + 1);
    return {iShown.substr(0, first), after};
}

std::string_view Trim(std::string_view iText) {
    constexpr std::string_view blanks = " \t";
    const std::size_t first = iText.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return iText.substr(first, iText.find_last_not_of(blanks) - first + 1);
}

/// The whole of \p iText as a finite number; a comma counts as the decimal point.
std::optional<double> ReadNumber(std::string_view iText) {
    std::string text(iText.starts_with('+') ? iText.substr(1) : iText);
    if (text.starts_with('+') || (iText.starts_with('+') && text.starts_with('-')))
        return std::nullopt;
    std::replace(text.begin(), text.end(), ',', '.');
    double number = 0.0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || !std::isfinite(number))
        return std::nullopt;
    return number;
}

} // namespace

QorDlgSpinner::QorDlgSpinner(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}

void QorDlgSpinner::SetRange(double iMin, double iMax, int iSteps) {
    SetRangeWithStep(iMin, iMax, iSteps > 0 ? (iMax - iMin) / iSteps : 0.0);
}

void QorDlgSpinner::SetRangeWithStep(double iMin, double iMax, double iStep) {
    if (!std::isfinite(iMin) || !std::isfinite(iMax) || iMax < iMin)
        return;
    min = iMin;
    max = iMax;
    if (std::isfinite(iStep) && iStep > 0.0)
        step = iStep;
    value = std::clamp(value, min, max);
    Changed(QorAspectRange | QorAspectValue);
}

void QorDlgSpinner::SetFormat(const QorString& iFormat) {
    const QorNumberFormat checked(iFormat.Str());
    if (!checked.IsValid() || checked.IsInteger())
        return;
    format = iFormat;
    Changed(QorAspectRange | QorAspectValue);
}

QorUnicodeString QorDlgSpinner::GetShownText() const {
    return QorUnicodeString(QorNumberFormat(format.Str()).Format(value)).Strip();
}

void QorDlgSpinner::SetValue(double iValue, QorDlgNotifyFlag iNotify) {
    if (std::isnan(iValue))
        return;
    const double wanted = std::clamp(iValue, min, max);
    if (wanted == value)
        return;
    const QorVar<QorDialog> alive(this);
    value = wanted;
    Changed(QorAspectValue);
    if (iNotify == QorDlgDoNotify)
        Notify(modify.Get());
}

QorUserResult QorDlgSpinner::UserSetValue(double iValue) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    if (std::isnan(iValue))
        return QorUserResult::Impossible;
    SetValue(iValue, QorDlgDoNotify);
    return QorUserResult::Done;
}

std::optional<double> QorDlgSpinner::ReadText(const QorUnicodeString& iText) const {
    const QorUnicodeString shown = GetShownText();
    const auto [before, after] = Surroundings(shown.Str());
    std::string_view text = Trim(iText.Str());
    if (const std::string_view prefix = Trim(before); text.starts_with(prefix))
        text.remove_prefix(prefix.size());
    if (const std::string_view suffix = Trim(after); text.ends_with(suffix))
        text.remove_suffix(suffix.size());
    return ReadNumber(Trim(text));
}

QorUserResult QorDlgSpinner::UserSetText(const QorUnicodeString& iText) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    const QorVar<QorDialog> alive(this);
    if (iText.Strip() == GetShownText()) {
        Changed(QorAspectValue);
        return QorUserResult::Done;
    }
    const std::optional<double> typed = ReadText(iText);
    if (typed)
        SetValue(*typed, QorDlgDoNotify);
    // The text may be another one for the same number, or none.
    if (!typed || *typed != value)
        Changed(QorAspectValue);
    return typed ? QorUserResult::Done : QorUserResult::Impossible;
}

QorUserResult QorDlgSpinner::UserStep(int iSteps) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    constexpr double onStep = 1e-6; // of a step
    const double position = (value - min) / step;
    const double nearest = std::round(position);
    const bool onGrid = std::abs(position - nearest) < onStep;
    SetValue(onGrid ? min + (nearest + iSteps) * step : value + iSteps * step, QorDlgDoNotify);
    return QorUserResult::Done;
}
