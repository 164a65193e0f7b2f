#pragma once

#include <vector>

#include "keltrix/platform/CString.h"
#include "keltrix/statics/Analysis.h"
#include "keltrix/statics/Export.h"

namespace Keltrix::Statics {

/// What a combination is for. BS 5950-1 has one of serviceability alone; EN 1990 has three.
enum class LimitState { Ultimate, Serviceability, Characteristic, Frequent, QuasiPermanent };

/// Cases that act together, with their factors and the spans on which they act.
struct Combination {
    /// "1.4 Dead + 1.6 Imposed on spans 1, 3". Spans count from 1 here, in the order of Analysis::Spans(), an overhang
    /// on the left being the first; in Term::spans and DeflectionCheck::span the same one has the index 0.
    CString name;
    CString clause; ///< where the rule stands: "EN 1990 6.4.3.2 (6.10b)"
    LimitState state = LimitState::Ultimate;
    std::vector<Term> terms;
    std::vector<CString> sources; ///< of each term's factor
};

/// A case in a rule: its factor where it is unfavourable and where it is favourable.
struct RuleTerm {
    std::size_t caseIndex = 0;
    double unfavourable = 0.0;
    double favourable = 0.0;
    CString source;
};

/// Cases that act together, before it is known what is favourable. An own table of factors is a list of these.
struct CombinationRule {
    CString name;
    CString clause;
    LimitState state = LimitState::Ultimate;
    std::vector<RuleTerm> terms;
};

/// Combination values of a variable action.
struct Psi {
    double psi0 = 1.0;
    double psi1 = 1.0;
    double psi2 = 1.0;
};

enum class Basis {
    BS5950,  ///< BS 5950-1:2000, Table 2 and 2.5.1
    EN1990,  ///< EN 1990:2002+A1, Annex A1 with recommended values
    EN1990UK ///< with the values of the UK National Annex
};

/// Expressions of EN 1990, 6.4.3.2.
enum class Expression { E610, E610ab };

/// By which standard, and by which expression of it, cases are combined.
struct RuleOptions {
    Basis basis = Basis::BS5950;
    Expression expression = Expression::E610;
};

/// A standard of combinations as beam files and design codes name it.
struct CombinationStandard {
    const wchar_t* name = L"";    ///< one word: "en1990-uk"
    const wchar_t* title = L"";   ///< "EN 1990 with the UK National Annex, (6.10)"
    const wchar_t* factors = L""; ///< whose factors they are, whatever the annex and the expression: "EN 1990"
    const wchar_t* limits = L"";  ///< the standard that is asked for limits of deflection with them: "EN 1993-1-1"
    RuleOptions options;
};

/// All there are, in the order of lists.
KELTRIX_STATICS_API const std::vector<CombinationStandard>& CombinationStandards();

/// Table A1.1 of EN 1990 or of its UK National Annex. Of an imposed load without a category, and of permanent actions,
/// all are 1. BS 5950 has no combination values: for it all are 1 and mean nothing. Throws std::invalid_argument where
/// the basis is none of those above.
KELTRIX_STATICS_API Psi PsiOf(Basis basis, ActionKind kind, Category category);

/// The rules of a standard for the cases of the beam as analysed, ultimate first, then serviceability: a self weight
/// that has a case of its own is among them. Without an answer there are none. Throws std::invalid_argument where an
/// option is none of those above.
///
/// All permanent cases come from one source and share one factor (EN 1990 Table A1.2(B), note 3). Imposed cases act
/// together; those of one category are one action, which leads or accompanies as a whole. Snow cases are alternatives
/// to each other, as are wind cases. With imposed loads of category H neither snow nor wind acts (EN 1991-1-1,
/// 3.3.2(1)).
KELTRIX_STATICS_API std::vector<CombinationRule> MakeRules(const Analysis& analysis, const RuleOptions& options);

/// What an engineer has to know of what was made of a beam.
struct Note {
    CString text; ///< a sentence
    bool isUnsafe =
        false; ///< something of the beam is left out of what follows, or may be more favourable there than it is
    bool isOfBeam = true; ///< of the beam, whatever the combination; otherwise of what it stands with
};

/// The combinations of a beam, and what was left out.
struct Combinations {
    std::vector<Combination> list;
    /// How many were left out because another one has the same factors, or because nothing acts in them.
    std::size_t dropped = 0;
    /// What an engineer has to know: rules that were left out and why, cases whose loads no rule counts.
    std::vector<Note> notes;
};

/// Combinations that follow from rules: each variable case (each span of a case that acts by span) acts or does not,
/// and the permanent cases have one of their two factors.
///
/// Found are those that give the largest or the smallest moment, shear, axial force, reaction or deflection from the
/// chord of a span anywhere: the envelope over them, in both directions, is that over all subsets of spans. Everything
/// at once, and the permanent loads alone, are always among them. For checks that depend on more than these
/// (interaction, the shape of a diagram) subsets that are not among them can govern.
///
/// Left out are combinations with the factors of another one of the same limit state, unit by unit, and those in which
/// nothing acts. Rules that name a case the beam has not, a factor that is not a number or no limit state are left out
/// with a note; so is every case that has loads and is in no rule. Spans in names count from 1, overhangs included.
KELTRIX_STATICS_API Combinations Expand(const Analysis& analysis, const std::vector<CombinationRule>& rules);

} // namespace Keltrix::Statics
