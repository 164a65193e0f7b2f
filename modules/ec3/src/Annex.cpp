#include "keltrix/ec3/Annex.h"

namespace Keltrix::EC3 {

namespace {

Annex MakeUk()
{
    Annex a;
    a.id = L"uk";
    a.title = L"UK National Annex";
    a.gammaM2 = 1.10;
    a.strengths = StrengthSource::ProductStandards;
    a.rolled = {0.4, 0.75, 2.0, 3.1, L'b', L'c', L'd'};
    a.welded = {0.2, 1.0, 2.0, 3.1, L'c', L'd', 0};
    // Not confirmed: the safe side of the recommended values.
    a.flangePlateau = 0.4;
    a.flangeFactor = 1.0;
    a.lateralOfHotHollow = true;
    a.lateralOfChannels = true;
    return a;
}

// Table 6.5 and the notes of 6.1(1) and 6.3.2.3(1).
Annex MakeRecommended()
{
    constexpr double EVERY = 1e9; // the second row has no upper bound
    Annex a;
    a.id = L"recommended";
    a.title = L"recommended values";
    a.gammaM2 = 1.25;
    a.strengths = StrengthSource::Table31;
    a.rolled = {0.4, 0.75, 2.0, EVERY, L'b', L'c', 0};
    a.welded = {0.4, 0.75, 2.0, EVERY, L'c', L'd', 0};
    return a;
}

} // namespace

const Annex& UkAnnex()
{
    static const Annex annex = MakeUk();
    return annex;
}

const Annex& RecommendedAnnex()
{
    static const Annex annex = MakeRecommended();
    return annex;
}

std::vector<NationalChoice> NationalChoices(const Annex& annex)
{
    return {{L"6.1(1)", L"γM0", annex.gammaM0},
            {L"6.1(1)", L"γM1", annex.gammaM1},
            {L"6.1(1)", L"γM2", annex.gammaM2},
            {L"6.2.6(3)", L"η", annex.eta},
            {L"6.3.2.3(1)", L"λLT,0 of rolled sections", annex.rolled.lambda0},
            {L"6.3.2.3(1)", L"β of rolled sections", annex.rolled.beta},
            {L"6.3.2.3(1)", L"λLT,0 of welded sections", annex.welded.lambda0},
            {L"6.3.2.3(1)", L"β of welded sections", annex.welded.beta}};
}

} // namespace Keltrix::EC3
