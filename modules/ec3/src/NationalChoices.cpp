// The national choices one by one: what a file may give, and what a report prints.

#include "NationalChoices.h"

#include <array>
#include <cmath>

namespace Keltrix::EC3 {

namespace {

using Design::Term;

enum class Words { Number, Strengths, Curve, LastCurve, YesNo };

struct ChoiceRow {
    const wchar_t* key;
    const wchar_t* clause;
    const wchar_t* meaning;
    double least, most;
    Words words;
    double (*get)(const Annex&);
    void (*set)(Annex&, double);
};

constexpr std::array<wchar_t, 5> CURVES{L'a', L'b', L'c', L'd', 0};

double PlaceOfCurve(wchar_t curve)
{
    for (std::size_t i = 0; i < CURVES.size(); ++i)
        if (CURVES[i] == curve) return static_cast<double>(i + 1);
    return static_cast<double>(CURVES.size());
}

wchar_t CurveAt(double place) { return CURVES[static_cast<std::size_t>(place) - 1]; }

// A ratio up to which a row holds, as a number: rows without an upper bound have a large one.
constexpr double EVERY_RATIO = 1e9;

#define KELTRIX_NUMBER(FIELD)                                                                                          \
    Words::Number, [](const Annex& a) { return a.FIELD; }, [](Annex& a, double value) { a.FIELD = value; }
#define KELTRIX_CURVE(WORDS, FIELD)                                                                                    \
    WORDS, [](const Annex& a) { return PlaceOfCurve(a.FIELD); },                                                       \
        [](Annex& a, double value) { a.FIELD = CurveAt(value); }
#define KELTRIX_FLAG(FIELD)                                                                                            \
    Words::YesNo, [](const Annex& a) { return a.FIELD ? 2.0 : 1.0; },                                                  \
        [](Annex& a, double value) { a.FIELD = value == 2.0; }

const std::array<ChoiceRow, 24> ROWS{{
    {L"gamma-M0", L"6.1(1)", L"γM0", 1.0, 1.5, KELTRIX_NUMBER(gammaM0)},
    {L"gamma-M1", L"6.1(1)", L"γM1", 1.0, 1.5, KELTRIX_NUMBER(gammaM1)},
    {L"gamma-M2", L"6.1(1)", L"γM2", 1.0, 1.6, KELTRIX_NUMBER(gammaM2)},
    {L"strengths", L"3.2.1(1)", L"strengths", 0.0, 0.0, Words::Strengths,
     [](const Annex& a) { return a.strengths == StrengthSource::ProductStandards ? 1.0 : 2.0; },
     [](Annex& a, double value) {
         a.strengths = value == 1.0 ? StrengthSource::ProductStandards : StrengthSource::Table31;
     }},
    {L"eta", L"6.2.6(3)", L"η", 1.0, 1.2, KELTRIX_NUMBER(eta)},
    {L"rolled-lambda0", L"6.3.2.3(1)", L"λLT,0 of rolled sections", 0.2, 0.4, KELTRIX_NUMBER(rolled.lambda0)},
    {L"rolled-beta", L"6.3.2.3(1)", L"β of rolled sections", 0.75, 1.0, KELTRIX_NUMBER(rolled.beta)},
    {L"rolled-first-ratio", L"6.3.2.3(1)", L"rolled sections: h/b up to which the first curve holds", 0.1, EVERY_RATIO,
     KELTRIX_NUMBER(rolled.firstRatio)},
    {L"rolled-first-curve", L"6.3.2.3(1)", L"rolled sections: first curve", 0.0, 0.0,
     KELTRIX_CURVE(Words::Curve, rolled.firstCurve)},
    {L"rolled-second-ratio", L"6.3.2.3(1)", L"rolled sections: h/b up to which the second curve holds", 0.1,
     EVERY_RATIO, KELTRIX_NUMBER(rolled.secondRatio)},
    {L"rolled-second-curve", L"6.3.2.3(1)", L"rolled sections: second curve", 0.0, 0.0,
     KELTRIX_CURVE(Words::Curve, rolled.secondCurve)},
    {L"rolled-last-curve", L"6.3.2.3(1)", L"rolled sections: curve beyond", 0.0, 0.0,
     KELTRIX_CURVE(Words::LastCurve, rolled.lastCurve)},
    {L"welded-lambda0", L"6.3.2.3(1)", L"λLT,0 of welded sections", 0.2, 0.4, KELTRIX_NUMBER(welded.lambda0)},
    {L"welded-beta", L"6.3.2.3(1)", L"β of welded sections", 0.75, 1.0, KELTRIX_NUMBER(welded.beta)},
    {L"welded-first-ratio", L"6.3.2.3(1)", L"welded sections: h/b up to which the first curve holds", 0.1, EVERY_RATIO,
     KELTRIX_NUMBER(welded.firstRatio)},
    {L"welded-first-curve", L"6.3.2.3(1)", L"welded sections: first curve", 0.0, 0.0,
     KELTRIX_CURVE(Words::Curve, welded.firstCurve)},
    {L"welded-second-ratio", L"6.3.2.3(1)", L"welded sections: h/b up to which the second curve holds", 0.1,
     EVERY_RATIO, KELTRIX_NUMBER(welded.secondRatio)},
    {L"welded-second-curve", L"6.3.2.3(1)", L"welded sections: second curve", 0.0, 0.0,
     KELTRIX_CURVE(Words::Curve, welded.secondCurve)},
    {L"welded-last-curve", L"6.3.2.3(1)", L"welded sections: curve beyond", 0.0, 0.0,
     KELTRIX_CURVE(Words::LastCurve, welded.lastCurve)},
    {L"correction", L"6.3.2.3(2)", L"f with kc = 1/C1^0.5", 0.0, 0.0, KELTRIX_FLAG(correctionFromC1)},
    {L"lateral-hot-hollow", L"6.3.2.3(1)", L"6.3.2.3 holds for hot finished hollow sections", 0.0, 0.0,
     KELTRIX_FLAG(lateralOfHotHollow)},
    {L"lateral-channels", L"6.3.2.3(1)", L"6.3.2.3 holds for rolled channels, by curve d", 0.0, 0.0,
     KELTRIX_FLAG(lateralOfChannels)},
    {L"flange-plateau", L"6.3.2.4(1)", L"λc0", 0.0, 0.5, KELTRIX_NUMBER(flangePlateau)},
    {L"flange-factor", L"6.3.2.4(2)", L"kfl", 1.0, 1.1, KELTRIX_NUMBER(flangeFactor)},
}};

#undef KELTRIX_NUMBER
#undef KELTRIX_CURVE
#undef KELTRIX_FLAG

std::vector<Term> TermsOf(Words words)
{
    switch (words) {
    case Words::Strengths:
        return {{L"product-standards", L"EN 10025, EN 10210, EN 10219"}, {L"table-3.1", L"Table 3.1"}};
    case Words::Curve:
        return {{L"a", L""}, {L"b", L""}, {L"c", L""}, {L"d", L""}};
    case Words::LastCurve:
        return {{L"a", L""}, {L"b", L""}, {L"c", L""}, {L"d", L""}, {L"none", L"6.3.2.2 holds there"}};
    case Words::YesNo:
        return {{L"no", L""}, {L"yes", L""}};
    case Words::Number:
        break;
    }
    return {};
}

NationalChoice ChoiceOf(const ChoiceRow& row, const Annex& annex)
{
    NationalChoice choice{row.clause, row.meaning, row.get(annex), {}};
    const std::vector<Term> terms = TermsOf(row.words);
    if (!terms.empty()) choice.word = terms[static_cast<std::size_t>(choice.value) - 1].name;
    if (terms.empty() && choice.value >= EVERY_RATIO) choice.word = L"any";
    return choice;
}

} // namespace

std::vector<NationalChoice> NationalChoices(const Annex& annex)
{
    std::vector<NationalChoice> choices;
    choices.reserve(ROWS.size());
    for (const ChoiceRow& row : ROWS)
        choices.push_back(ChoiceOf(row, annex));
    return choices;
}

std::vector<Design::NationalChoice> ChoicesOfFiles()
{
    std::vector<Design::NationalChoice> choices;
    choices.reserve(ROWS.size());
    for (const ChoiceRow& row : ROWS)
        choices.push_back({row.key, row.clause, row.meaning, row.least, row.most, TermsOf(row.words)});
    return choices;
}

Annex AnnexWith(const Annex& base, const Design::CodeSettings& settings)
{
    Annex annex = base;
    for (std::size_t i = 0; i < ROWS.size(); ++i) {
        const double value = settings.National(i);
        if (std::isnan(value)) continue;
        ROWS[i].set(annex, value);
        annex.given.push_back(i);
    }
    if (!settings.annexTitle.IsEmpty()) annex.title = settings.annexTitle;
    return annex;
}

} // namespace Keltrix::EC3
