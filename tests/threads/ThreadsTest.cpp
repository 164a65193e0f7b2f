// An object is used by one thread at a time; different objects may be used in as many threads as there are.

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "keltrix/bs5950/BS5950.h"
#ifdef KELTRIX_THREADS_EC3
#include "keltrix/ec3/SteelMemberEC3.h"
#endif
#ifdef KELTRIX_THREADS_STATICS
#include "keltrix/design/MomentDiagram.h"
#include "keltrix/statics/GeneratedMember.h"
#endif
#include "support/ConcreteMember.h"

namespace Keltrix {
namespace {

using BS5950::CSteelMemberBS5950;
using Steel::CMemberResult;
using Steel::CRestraint;

constexpr int THREADS = 4;

void InThreads(const std::function<void(int)>& act)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < THREADS; ++i)
        threads.emplace_back(act, i);
    for (std::thread& thread : threads)
        thread.join();
}

std::vector<CString> Examples()
{
    std::vector<CString> texts;
    for (const auto& entry : std::filesystem::directory_iterator(KELTRIX_EXAMPLES_DIR)) {
        if (entry.path().extension() != ".csv") continue;
        std::ifstream file(entry.path(), std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        texts.push_back(CString::FromUtf8(text.str()).value());
    }
    return texts;
}

// Everything that a check of a member says.
template <class Member>
std::string CheckedText(const CString& text)
{
    CMemberResult result;
    Member member;
    CSteelGrade grade;
    const bool isRead = member.CSVInputData(text, grade) && member.SetGrade(grade);
    member.SetResult(&result);
    const bool passes = isRead && member.Check();
    const std::unique_ptr<Steel::CSteelMember> copy(member.Clone());
    return (passes ? "pass\n" : "no pass\n") + result.GetVerbose().ToUtf8().value_or("") +
           result.GetSummary().ToUtf8().value_or("") + copy->CSVInputData(grade).ToUtf8().value_or("");
}

// The first thing that each thread does is what is built on first use: the catalogue and the lists of presets. So this test
// must be the first to use them, as it is when CTest runs every test in a process of its own.
TEST(Threads, WhatIsBuiltOnFirstUseIsBuiltOnce)
{
    std::vector<std::string> found(THREADS);
    InThreads([&](int i) {
        const CSectDB* const catalogue = CSectDB::GetDatabase();
        std::string& text = found[static_cast<std::size_t>(i)];
        text += std::to_string(catalogue->Entries().size()) + ' ' + std::to_string(CRestraint::PresetStrings().size());
        for (const CString& name : catalogue->Suggest(L"UB 457x191x68", 3))
            text += ' ' + name.ToUtf8().value_or("");
        text += ' ' + CRestraint(CRestraint::PINNED, Data::LoadPos(), 0.0).Description().ToUtf8().value_or("");
    });
    for (const std::string& text : found)
        EXPECT_EQ(text, found[0]);
    EXPECT_NE(found[0].find("UB 457x191x67"), std::string::npos) << found[0];
}

template <class Member>
void ExpectTheSameInThreads()
{
    const std::vector<CString> texts = Examples();
    ASSERT_GE(texts.size(), 8u);
    std::vector<std::string> alone;
    for (const CString& text : texts)
        alone.push_back(CheckedText<Member>(text));
    std::vector<int> differences(THREADS);
    InThreads([&](int thread) {
        for (std::size_t i = 0; i < texts.size(); ++i) {
            // Each thread begins with another member.
            const std::size_t k = (i + 2 * static_cast<std::size_t>(thread)) % texts.size();
            if (CheckedText<Member>(texts[k]) != alone[k]) ++differences[static_cast<std::size_t>(thread)];
        }
    });
    EXPECT_EQ(differences, std::vector<int>(THREADS, 0));
}

TEST(Threads, MembersAreCheckedAsInOne) { ExpectTheSameInThreads<CSteelMemberBS5950>(); }

#ifdef KELTRIX_THREADS_EC3
// With elastic critical moments, so with the stability library.
TEST(Threads, MembersAreCheckedToEurocodeAsInOne) { ExpectTheSameInThreads<EC3::CSteelMemberEC3>(); }
#endif

#ifdef KELTRIX_THREADS_STATICS
// Largest moments of all combinations of a beam with that many spans of 5 m.
std::vector<double> MomentsOfBeam(int spans)
{
    Statics::Beam beam;
    beam.length = 5.0 * spans;
    beam.section.E = 210e9;
    beam.section.Iy = 3e-4;
    beam.section.Iz = 2e-5;
    beam.selfWeight = false;
    beam.supports.resize(static_cast<std::size_t>(spans) + 1);
    for (std::size_t i = 0; i < beam.supports.size(); ++i)
        beam.supports[i].at = 5.0 * static_cast<double>(i);
    beam.cases = {{L"Dead", Statics::ActionKind::Permanent, Statics::Category::None, false},
                  {L"Imposed", Statics::ActionKind::Imposed, Statics::Category::B, true}};
    beam.loads = {Statics::UniformLoad(0, 8e3), Statics::UniformLoad(1, 12e3)};
    const Statics::Analysis analysis(beam);
    std::vector<double> moments;
    const auto all = Statics::Expand(analysis, Statics::MakeRules(analysis, {}));
    for (const Statics::GeneratedMember& member : Statics::MakeMembers(analysis, all.list))
        moments.push_back(Design::MomentDiagram(member.points, member.subSpans, Design::Bending::Major).Largest());
    return moments;
}

TEST(Threads, BeamsAreSolvedAsInOne)
{
    std::vector<std::vector<double>> alone;
    for (int spans = 1; spans <= 6; ++spans)
        alone.push_back(MomentsOfBeam(spans));
    ASSERT_GT(alone.back().size(), 4u);
    std::vector<int> differences(THREADS);
    InThreads([&](int thread) {
        for (std::size_t i = 0; i < alone.size(); ++i) {
            const std::size_t k = (i + static_cast<std::size_t>(thread)) % alone.size();
            if (MomentsOfBeam(static_cast<int>(k) + 1) != alone[k]) ++differences[static_cast<std::size_t>(thread)];
        }
    });
    EXPECT_EQ(differences, std::vector<int>(THREADS, 0));
}
#endif

// The scanner goes on where the thread left off, not where another one did.
TEST(Threads, LinesAreReadByEachForItself)
{
    std::vector<int> wrong(THREADS);
    InThreads([&](int thread) {
        for (int round = 0; round < 200; ++round) {
            CString text;
            for (int line = 0; line < 5; ++line)
                text += CString(std::to_wstring(10 * thread + line)) + L"\n";
            for (int line = 0; line < 5; ++line) {
                const CString read = GetLine(line == 0 ? &text : nullptr);
                if (read != CString(std::to_wstring(10 * thread + line))) ++wrong[static_cast<std::size_t>(thread)];
            }
        }
    });
    EXPECT_EQ(wrong, std::vector<int>(THREADS, 0));
}

TEST(Threads, TheNumberOfMembersIsRightAfterwards)
{
    using Access = Steel::CSteelMemberGenTestAccess;
    const int before = Access::Instances();
    InThreads([](int) {
        for (int i = 0; i < 50000; ++i) {
            const CSteelMemberBS5950 member;
            const std::unique_ptr<Steel::CSteelMember> copy(member.Clone());
        }
    });
    EXPECT_EQ(Access::Instances(), before);
}

} // namespace
} // namespace Keltrix
