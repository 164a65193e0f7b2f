// A whole check of a member by the design codes' modules: without a text, with the text, and from the text of the input
// file to the report.

#include "Bench.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "Examples.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"
#ifdef KELTRIX_BENCH_EC3
#include "keltrix/ec3/SteelMemberEC3.h"
#endif

namespace Keltrix::Bench {

namespace {

using namespace Keltrix::Steel;
using BS5950::CSteelMemberBS5950;

CString ReadText(const std::filesystem::path& path)
{
    const auto text = CString::FromUtf8(ReadBytes(path));
    if (!text) throw std::runtime_error("no text: " + path.string());
    return *text;
}

template <class Member = CSteelMemberBS5950>
std::shared_ptr<Member> MakeMember(const CString& text)
{
    auto member = std::make_shared<Member>();
    CSteelGrade grade;
    if (!member->CSVInputData(text, grade) || !member->SetGrade(grade))
        throw std::runtime_error("an example member is not read");
    return member;
}

/// A check into a fresh result, with the utilisation as its answer.
double Check(CSteelMemberGen& member, bool withText)
{
    CMemberResult result;
    result.EnableText(withText);
    member.SetResult(&result);
    member.Check();
    return result.UtilOverAll();
}

#ifdef KELTRIX_BENCH_EC3
// The examples that the module takes, beside the same check to BS 5950-1.
void RegisterEC3(const std::string& example, const CString& text)
{
    const auto member = MakeMember<EC3::CSteelMemberEC3>(text);
    if (EC3::SectionRefusal(member->GetKeltrixSec())) return;
    const std::string name = "check " + example + " to EN 1993-1-1";
    const double util = Check(*member, false);
    if (!(util > 0.0) || util != Check(*member, true)) throw std::logic_error("nothing was checked: " + name);
    for (const bool withText : {false, true}) {
        const char* const kind = withText ? " with text" : " without text";
        Measure(name + kind, [member, withText] { return Check(*member, withText); });
        Compare({name + kind, "check " + example + kind});
    }
}
#endif

} // namespace

void RegisterChecks()
{
    std::vector<CString> texts;
    for (const auto& path : ExampleFiles()) {
        texts.push_back(ReadText(path));
        const auto member = MakeMember(texts.back());
        const std::string name = "check " + path.stem().string();
        const double util = Check(*member, false);
        if (!(util > 0.0) || util != Check(*member, true)) throw std::logic_error("nothing was checked: " + name);
        Measure(name + " without text", [member] { return Check(*member, false); });
        Measure(name + " with text", [member] { return Check(*member, true); });
        Compare({name + " without text", name + " with text", 1.0 / 3.0});
#ifdef KELTRIX_BENCH_EC3
        RegisterEC3(path.stem().string(), texts.back());
#endif
    }

    const Work perMember{static_cast<double>(texts.size())};
    const auto batch = [texts](bool withText) {
        double sum = 0.0;
        for (const CString& text : texts)
            sum += Check(*MakeMember(text), withText);
        return sum;
    };
    const auto name = [](bool withText) {
        return std::string("read and check all examples") + (withText ? " with text" : " without text");
    };
    for (const bool withText : {false, true})
        Measure(
            name(withText), [batch, withText] { return batch(withText); }, perMember);
    Compare({name(false), name(true)});
}

} // namespace Keltrix::Bench
