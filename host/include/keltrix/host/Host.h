#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "keltrix/design/Findings.h"

/// Member files in, findings out, for programs that check steel members. No file is opened, nothing is printed and no process is
/// started. All texts are UTF-8. The catalogue of sections is shared by the whole process; separate calls may run in separate threads.
namespace Keltrix::Host {

struct CheckedMember;
struct LoadReport;

/// How texts are read and members checked.
struct Settings {
    std::string code;  ///< id of the design code, letter case aside; empty: the first that is built in
    std::string annex; ///< its national annex; empty: the first
    /// Options of the design code by name, with their values in words or m: {"ltb", "elastic"}. A flag has an empty value. An
    /// option stands once.
    std::vector<std::pair<std::string, std::string>> options;
    bool allowGaps = false; ///< numbers need not start at 1, nor positions at 0; those of sub-spans may leave some out
    bool isStrict = false;  ///< every warning is an error
};

/// One thing that is wrong with a text, or strange about a member in it.
struct Diagnostic {
    std::string severity;  ///< "error", "warning" or "note"
    std::int64_t line = 0; ///< of the text, counted from 1; 0 where it is none
    std::string code; ///< one word for each kind: "missing-field"; empty where a member is refused for another reason
    std::string message; ///< with its place: "floor.csv:14: MEMBERPOINT position: got "2.5m", expected a number in m"

    // The parts of the message, each empty where it does not apply.
    std::string keyword = {};  ///< of the line, or the key of a beam file: "MEMBERPOINT", "load.at"
    std::string field = {};    ///< "position"
    std::string got = {};      ///< what stands there, quoted
    std::string expected = {}; ///< "a number in m"
    std::string advice = {};   ///< what comes of it, or what to write instead
};

/// A member of a text.
struct Outcome {
    std::int64_t line = 0; ///< of its TITLE line
    std::string title;
    /// "pass" where every rule that applies was evaluated and none failed, "fail", "not checked", or "refused" where it cannot be read or
    /// the design code does not take it. Only the first passes.
    std::string status;
    double utilisation = 0.0;            ///< the largest of all rules; 0 where the member is refused
    std::string governing;               ///< rule, clause and place of the largest utilisation; "nothing" without one
    std::vector<Diagnostic> diagnostics; ///< in the order of their lines; what the check found strange follows
    Design::MemberFindings findings;     ///< empty where it is refused

    std::shared_ptr<const CheckedMember> checked; ///< for the functions below; null where it is refused

    /// Of a beam: makes the part of its calculation sheet about its loads, with ids that start with `id`; empty for a member file.
    std::function<std::string(const std::string& id, bool isBrief)> loads;
    /// Of a beam without errors: reactions, envelopes and deflections as data; empty otherwise.
    std::function<LoadReport()> loadReport;
};

/// The members of a text and what is wrong between them.
struct Outcomes {
    std::vector<Outcome> members;
    std::vector<Diagnostic> diagnostics; ///< of no member: lines between members, a text that is no member file

    /// Whether there is a member, every member passes and nothing between them is an error.
    bool Pass() const;
};

/// Reads the members of a text and checks each. `name` is how messages call the text. A text that cannot be read gives a diagnostic,
/// never an exception. Throws std::runtime_error for settings that mean nothing: a code, annex, option or value that there is not, with those that
/// there are; an option given twice.
Outcomes Check(std::string_view text, const std::string& name, const Settings& settings = {});

/// The findings of a member as JSON, as `ksteel check --format json` writes them. Throws std::invalid_argument for a refused member.
std::string FindingsJson(const Outcome& outcome);

/// The report of a member as plain text, as `ksteel check` prints it: summary and calculation. Throws std::invalid_argument for a refused
/// member.
std::string Report(const Outcome& outcome);

/// The calculation sheets of all members that are not refused, as one HTML document that needs nothing but itself. `job` is its title.
std::string Sheets(const Outcomes& outcomes, const std::string& job);

} // namespace Keltrix::Host
