#include "memberfile/MemberText.h"

#include <algorithm>

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

std::string PointLine(std::size_t index, const Steel::CMemberPoint& point)
{
    const CRestraint restraint = point.GetRestraint();
    return "MEMBERPOINT," + std::to_string(index) + ',' + Number(point.GetPos()) + ',' + RestraintWords(restraint) +
           ',' + Number(restraint.LoadHeight()) + '\n';
}

std::string SubSpanLine(std::size_t index, const Steel::CSubSpan& subSpan)
{
    std::string line = "SUBSPAN," + std::to_string(index);
    for (const Vec3<double>& end :
         {subSpan.GetForcesLeft(), subSpan.GetForcesRight(), subSpan.GetMomentsLeft(), subSpan.GetMomentsRight()})
        line += ',' + Number(end.x) + ',' + Number(end.y) + ',' + Number(end.z);
    return line + ',' + RestraintWords(subSpan.GetRestraint()) + ',' + Number(subSpan.GetRestraint().LoadHeight()) +
           '\n';
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
    std::string text = "TITLE," + title + '\n';
    text += "SECTION," + content.section + ',' + content.type + "\nGRADE," + content.grade + '\n';
    text += "NET_TO_GROSS," + Number(content.netToGross) + '\n';
    text += "ALLOWABLE_PLASTIC/ELASTIC_RATIO," + Number(content.plasticToElastic) + '\n';
    text += "SHEAR_LAG_FACTOR," + Number(content.shearLag) + '\n';
    text += "HEADINGS,YES/NO,Leff Maj,Leff Min,Leff LT\nEFFECTIVE_LENGTH_OVERRIDES,";
    text += content.effectiveLengths ? "YES" : "NO";
    if (content.effectiveLengths)
        for (const double length : *content.effectiveLengths)
            text += ',' + Number(length);
    text += '\n';
    if (content.momentFactor) text += "EQUIVALENT_UNIFORM_MOMENT_FACTOR," + Number(*content.momentFactor) + '\n';
    text += "HEADINGS,Index,Position,Restraint,Load height\n";
    for (std::size_t i = 0; i < content.points.size(); ++i)
        text += PointLine(i + 1, content.points[i]);
    text += "HEADINGS,Index,Fx-L,Fy-L,Fz-L,Fx-R,Fy-R,Fz-R,Mx-L,My-L,Mz-L,Mx-R,My-R,Mz-R,Restraint,Load height\n";
    for (std::size_t i = 0; i < content.subSpans.size(); ++i)
        text += SubSpanLine(i + 1, content.subSpans[i]);
    return text + "END\n";
}

} // namespace Keltrix::Host
