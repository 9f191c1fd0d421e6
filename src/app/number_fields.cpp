#include "app/number_fields.h"

#include <QRegularExpression>
#include <cmath>

namespace {

void SetUpStepping(QAbstractSpinBox& field) {
    field.setAccelerated(true);
    field.setCorrectionMode(QAbstractSpinBox::CorrectToNearestValue);
    field.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

}  // namespace

TeskIntegerField::TeskIntegerField(int minimum, int maximum, QWidget* parent) : QSpinBox(parent) {
    setRange(minimum, maximum);
    SetUpStepping(*this);
}

TeskTimeField::TeskTimeField(int32_t minimumMs, int32_t maximumMs, QWidget* parent)
    : QDoubleSpinBox(parent) {
    setDecimals(2);
    setSingleStep(0.1);
    setRange(minimumMs / 1000.0, maximumMs / 1000.0);
    setSuffix(QStringLiteral(" s"));
    SetUpStepping(*this);
}

int32_t TeskTimeField::GetMilliseconds() const noexcept {
    return static_cast<int32_t>(std::lround(value() * 1000.0));
}

void TeskTimeField::SetMilliseconds(int32_t ms) {
    setValue(ms / 1000.0);
}

std::optional<double> TeskTimeField::ParseSeconds(const QString& text) {
    static const QRegularExpression kTime(
        QStringLiteral(R"(^\s*([0-9]*[.,]?[0-9]*)\s*(ms|s|sec|secs|seconds)?\s*$)"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = kTime.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    QString number = match.captured(1);
    number.replace(QLatin1Char(','), QLatin1Char('.'));
    bool ok = false;
    const double value = number.toDouble(&ok);
    if (!ok)
        return std::nullopt;
    return match.captured(2).compare(QLatin1String("ms"), Qt::CaseInsensitive) == 0 ? value / 1000.0
                                                                                    : value;
}

double TeskTimeField::valueFromText(const QString& text) const {
    return ParseSeconds(text).value_or(value());
}

QValidator::State TeskTimeField::validate(QString& text, int&) const {
    // Half-typed units ("1 m" on the way to "1 ms") are not times yet.
    static const QRegularExpression kTyping(
        QStringLiteral(R"(^\s*[0-9]*[.,]?[0-9]*\s*[a-zA-Z]*\s*$)"));
    const std::optional<double> seconds = ParseSeconds(text);
    if (!seconds)
        return kTyping.match(text).hasMatch() ? QValidator::Intermediate : QValidator::Invalid;
    return *seconds >= minimum() && *seconds <= maximum() ? QValidator::Acceptable
                                                          : QValidator::Intermediate;
}
