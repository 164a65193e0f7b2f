#pragma once

#include <optional>
#include <string>
#include <vector>

#ifdef KELTRIX_HOST_WITH_STATICS
#include "check/CheckedBeam.h"
#endif
#include "check/CheckedMember.h"
#include "keltrix/platform/KxUtil.h"
#include "text/JsonFwd.h"

namespace Keltrix::Host {

/// Which sections are offered to a member, and how it is read and checked with each.
struct SectionSearch {
    std::vector<std::string> families; ///< of the catalogue
    std::string by = "mass";           ///< or "depth": which sections come first
    std::optional<double> maxDepth;    ///< m
    int count = 6;                     ///< passing sections that are looked for
    CodeChoice code;
    ReadingOptions reading; ///< of a beam's members
};

/// A section that was offered.
struct Candidate {
    const CSectDB::Entry* entry;
    std::string name;
    std::string status;                       ///< "pass", "fail" or "not checked"
    double utilisation;                       ///< not-a-number where the section could not be checked
    std::string governing;                    ///< or why it could not be
    std::vector<MemberWarning> warnings = {}; ///< of a beam with this section
};

/// What became of the sections, the lightest or shallowest first.
struct SectionChoice {
    std::vector<Candidate> passing;   ///< in order, as many as were asked for
    std::vector<Candidate> failing;   ///< the last ones in front of the first that passes, which fail
    std::vector<Candidate> unchecked; ///< could not be checked: in front of the last that passes
    bool isEmpty = false;             ///< no section is within the depth
};

/// The sections of the families within the depth, the lightest or the shallowest first, of equal ones that which is lighter or shallower.
/// Throws BadInput for a family that there is not.
std::vector<const CSectDB::Entry*> SectionsOf(const SectionSearch& search);

/// The sections with which member i of a file passes. Throws BadMember where no section could mend what the design code rejects.
SectionChoice ChooseSection(const MemberFile& file, std::size_t i, const SectionSearch& search);

/// Those with which all load cases of one member pass; each candidate has the worst of them.
SectionChoice ChooseSection(const std::vector<CheckedMember>& cases, const SectionSearch& search);

#ifdef KELTRIX_HOST_WITH_STATICS
/// Those with which a beam passes, each with its own weight and its own stiffness. A reaction outside a column's face stays where the file
/// has it.
SectionChoice ChooseSection(const Beam& beam, const SectionSearch& search);
#endif

/// Whose choice it is.
struct ChoiceHead {
    std::string file;
    LineNumber line = 1;
    std::string title;
    std::vector<MemberWarning> warnings;
};

/// The choice as `ksteel design --format json` writes it; `by` is that of the search.
Json JsonOf(const SectionChoice& choice, const std::string& by, const ChoiceHead& head);

} // namespace Keltrix::Host
