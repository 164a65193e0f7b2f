#include "keltrix/design/Findings.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Keltrix::Design {

const wchar_t* StatusName(Status status)
{
    switch (status) {
    case Status::Passed:
        return L"pass";
    case Status::Failed:
        return L"fail";
    case Status::NotChecked:
        break;
    }
    return L"not checked";
}

const wchar_t* StatusName(CheckStatus status)
{
    switch (status) {
    case CheckStatus::Passed:
        return L"passed";
    case CheckStatus::Failed:
        return L"failed";
    case CheckStatus::NotApplicable:
        return L"not applicable";
    case CheckStatus::OutOfScope:
        return L"outside the input";
    case CheckStatus::Information:
        return L"information";
    case CheckStatus::NotEvaluated:
        break;
    }
    return L"not evaluated";
}

const wchar_t* TopicName(Topic topic)
{
    static constexpr std::array<const wchar_t*, static_cast<std::size_t>(Topic::COUNT)> NAMES{
        L"other",
        L"tension",
        L"compression",
        L"bending, major axis",
        L"bending, minor axis",
        L"shear along the web",
        L"shear along the flanges",
        L"shear buckling",
        L"web under concentrated loads",
        L"torsion",
        L"actions together, cross-section",
        L"buckling, major axis",
        L"buckling, minor axis",
        L"torsional buckling",
        L"lateral-torsional buckling",
        L"actions together, member",
        L"deflection"};
    const auto place = static_cast<std::size_t>(topic);
    return NAMES[place < NAMES.size() ? place : 0];
}

namespace {

// Four figures without an exponent.
CString Figures(double value, const wchar_t* unit)
{
    CString text;
    text.Format(std::abs(value) < 9999.5 ? L"%.4G %s" : L"%.0f %s", value, unit);
    return text;
}

} // namespace

CString AreaText(double m2) { return Figures(m2 * 1e4, L"cm²"); }

CString ModulusText(double m3) { return Figures(m3 * 1e6, L"cm³"); }

CString QuantityText(Quantity quantity, double value, const CDesFormat& fmt)
{
    switch (quantity) {
    case Quantity::Force:
        return fmt.Force(value);
    case Quantity::Moment:
        return fmt.Moment(value);
    case Quantity::Stress:
        return fmt.Stress(value);
    case Quantity::Length: {
        CString text;
        text.Format(L"%.4g mm", value * 1e3);
        return text;
    }
    case Quantity::Distance:
        return fmt.Length(value);
    case Quantity::Area:
        return AreaText(value);
    case Quantity::Modulus:
        return ModulusText(value);
    case Quantity::None:
        break;
    }
    return fmt.NoDim(value);
}

CString StepText(const Step& step, const CDesFormat& fmt)
{
    return StepText(step, QuantityText(step.quantity, step.value, fmt));
}

CString StepText(const Step& step, const CString& value)
{
    CString text;
    AppendStep(text, step, value);
    return text;
}

void AppendStep(CString& text, const Step& step, std::wstring_view value)
{
    text += step.symbol;
    if (!step.formula.IsEmpty()) (text += L" = ") += step.formula;
    if (!step.values.IsEmpty()) (text += L" = ") += step.values;
    (text += L" = ") += value;
    if (!step.note.IsEmpty()) (text += L", ") += step.note;
}

CString AssumptionText(const Assumption& a, const CDesFormat& fmt)
{
    CString text = a.text;
    if (a.isLoad) text.AppendFormat(L": %s/m", fmt.Force(a.value));
    if (a.start < a.end) text.AppendFormat(L", %s to %s", fmt.Length(a.start), fmt.Length(a.end));
    return text;
}

const RuleFinding* MemberFindings::Governing() const
{
    const auto it = std::find_if(rules.begin(), rules.end(), [](const RuleFinding& f) { return f.governing; });
    return it == rules.end() ? nullptr : &*it;
}

const RuleFinding* MemberFindings::Worst(int rule) const
{
    const RuleFinding* worst = nullptr;
    for (const RuleFinding& f : rules)
        if (f.rule == rule && f.status != CheckStatus::Information &&
            (!worst || IsWorse(f.utilisation, worst->utilisation)))
            worst = &f;
    return worst;
}

bool MemberFindings::HasFailed() const
{
    return std::any_of(rules.begin(), rules.end(),
                       [](const RuleFinding& f) { return f.status == CheckStatus::Failed; });
}

} // namespace Keltrix::Design
