#pragma once

#include <string>

#include "loads/LoadReport.h"
#include "text/JsonFwd.h"

namespace Keltrix::Host {

/// The report in the mark-up of reports, kN, m, kNm and mm: cases and their loads, combinations, reactions, envelopes and
/// deflections, notes.
std::string LoadMarkup(const LoadReport& report);

/// The tables of the report alone, under headings of the level "h4", for a calculation sheet. Where there are many
/// combinations those that govern nothing are left out, which a line says. The short form has the reactions alone.
std::string LoadTables(const LoadReport& report, bool isBrief);

/// The report as data; docs/schema/loads.schema.json has every name.
Json JsonOf(const LoadReport& report);

/// "45 kN", "120.5 kNm", "22.4 mm": numbers with up to five significant figures.
std::string KiloNewtons(double newtons);
std::string KiloNewtonMetres(double newtonMetres);
std::string MilliMetres(double metres);
std::string Metres(double metres);

/// Size and sense of a load, without its place: "12 kN/m", "45 kN up", "20 kNm clockwise", "0 to 15 kN/m against y". Down goes
/// without saying. On a member that is not level, loads across it say so.
std::string SizeOf(const Statics::Load& load, bool isLevel);
/// "on the top flange", "0.2 m above the top flange"; empty at the shear centre.
std::string HeightOf(const Statics::Load& load);
/// "at 3 m", "0 m to 6 m", "at 3 m, 0.2 m above the top flange". The shear centre goes without saying.
std::string PlaceOf(const Statics::Load& load);

/// "vertical", "lateral moment"; "moment", "minor-axis shear".
const char* NameOf(ReactionPart part);
const char* NameOf(Action action);
/// As KiloNewtonMetres where the part or the action is a moment, otherwise as KiloNewtons.
std::string ValueText(ReactionPart part, double value);
std::string ValueText(Action action, double value);

} // namespace Keltrix::Host
