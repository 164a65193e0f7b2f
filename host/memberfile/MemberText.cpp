#include "memberfile/MemberText.h"

#include <algorithm>
#include <array>

#include "memberfile/MemberGrammar.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Steel::CRestraint;

std::string Number(double value) { return value == 0.0 ? "0" : Shortest(value); }

// In words where these mean exactly the same bits, else as the number of them.
std::string RestraintWords(const CRestraint& restraint)
{
    const CRestraint bare(restraint.RestFlag(), Steel::SHR_CENTRE, 0.0);
    if (bare.RestFlag() == 0) return "Free";
    const CString words = bare.UserDescription();
    CRestraint again;
    if (again.SetDescription(words) && again.RestFlag() == bare.RestFlag()) return Utf8(words);
    return std::to_string(static_cast<unsigned int>(bare.RestFlag()));
}

// The beginnings and the captions of lines, which do not differ from file to file.
struct LineTexts {
    LineTexts()
    {
        for (const LineRule& rule : MemberLines()) {
            begun[static_cast<std::size_t>(rule.kind) + 1] = KeywordOf(rule.kind) + ',';
            captions[static_cast<std::size_t>(rule.kind) + 1] = CaptionLineOf(rule.kind);
        }
    }

    static constexpr std::size_t COUNT = static_cast<std::size_t>(LineKind::End) + 2; // those of captions are -1
    std::array<std::string, COUNT> begun;
    std::array<std::string, COUNT> captions;
};

const LineTexts& Texts()
{
    static const LineTexts texts;
    return texts;
}

// A line up to its first field.
const std::string& Begun(LineKind kind) { return Texts().begun[static_cast<std::size_t>(kind) + 1]; }

// The captions over the fields of a line.
const std::string& Captions(LineKind kind) { return Texts().captions[static_cast<std::size_t>(kind) + 1]; }

// What is held in the words that are given, or in those of the record.
std::string Held(const std::vector<std::string>& words, std::size_t i, const CRestraint& restraint)
{
    return i < words.size() ? words[i] : RestraintWords(restraint);
}

std::string PointLine(std::size_t index, const Steel::CMemberPoint& point, const std::string& held)
{
    return Begun(LineKind::MemberPoint) + std::to_string(index) + ',' + Number(point.GetPos()) + ',' + held + ',' +
           Number(point.GetRestraint().LoadHeight()) + '\n';
}

std::string SubSpanLine(std::size_t index, const Steel::CSubSpan& subSpan, const std::string& held)
{
    std::string line = Begun(LineKind::SubSpan) + std::to_string(index);
    for (const Vec3<double>& end :
         {subSpan.GetForcesLeft(), subSpan.GetForcesRight(), subSpan.GetMomentsLeft(), subSpan.GetMomentsRight()})
        line += ',' + Number(end.x) + ',' + Number(end.y) + ',' + Number(end.z);
    return line + ',' + held + ',' + Number(subSpan.GetRestraint().LoadHeight()) + '\n';
}

} // namespace

std::string GradeFields(const CSteelGrade& grade)
{
    std::string fields = Utf8(grade.Name());
    if (grade.GetUserPy() == 0.0) return fields;
    for (const double value : {grade.GetUserPy(), grade.GetUserPu(), grade.GetUserE(), grade.GetMatFactor()})
        fields += ',' + Number(value);
    return fields;
}

std::string MemberFileText(const MemberContent& content)
{
    std::string title = content.title;
    std::replace(title.begin(), title.end(), ',', ';');
    std::string text = Begun(LineKind::Title) + title + '\n';
    text += Begun(LineKind::Section) + content.section + ',' + content.type + '\n';
    text += Begun(LineKind::Grade) + content.grade + '\n';
    text += Begun(LineKind::NetToGross) + Number(content.netToGross) + '\n';
    text += Begun(LineKind::PlasticToElastic) + Number(content.plasticToElastic) + '\n';
    text += Begun(LineKind::ShearLag) + Number(content.shearLag) + '\n';
    text += Captions(LineKind::LengthOverrides) + Begun(LineKind::LengthOverrides);
    text += content.effectiveLengths ? "YES" : "NO";
    if (content.effectiveLengths)
        for (const double length : *content.effectiveLengths)
            text += ',' + Number(length);
    text += '\n';
    if (content.momentFactor) text += Begun(LineKind::UniformMoment) + Number(*content.momentFactor) + '\n';
    text += Captions(LineKind::MemberPoint);
    for (std::size_t i = 0; i < content.points.size(); ++i)
        text += PointLine(i + 1, content.points[i], Held(content.pointWords, i, content.points[i].GetRestraint()));
    text += Captions(LineKind::SubSpan);
    for (std::size_t i = 0; i < content.subSpans.size(); ++i)
        text +=
            SubSpanLine(i + 1, content.subSpans[i], Held(content.subSpanWords, i, content.subSpans[i].GetRestraint()));
    return text + KeywordOf(LineKind::End) + '\n';
}

std::string ExplainedMemberFile(const std::string& memberFile)
{
    std::string text;
    LineKind last = LineKind::Unknown;
    for (std::size_t at = 0; at < memberFile.size();) {
        const std::size_t end = std::min(memberFile.find('\n', at), memberFile.size() - 1);
        const std::string line = memberFile.substr(at, end + 1 - at);
        const LineKind kind = LineKindOf(std::string_view(line).substr(0, line.find_first_of(",\n")));
        if (kind != LineKind::Unknown && kind != last) text += RuleOf(kind).explanation;
        text += line;
        last = kind;
        at = end + 1;
    }
    return text;
}

} // namespace Keltrix::Host
