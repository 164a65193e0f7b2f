#include "report/Style.h"

namespace Keltrix::Host {

namespace {

// Colours are variables of two palettes; every text colour keeps a contrast of 4.5 or more to the page (tested).
constexpr std::string_view PALETTES = R"css(
:root {
  color-scheme: light dark;
  --page: #ffffff; --panel: #f3f5f7; --ink: #18212b; --muted: #4d5a67; --rule: #c4ccd4;
  --link: #1a5296; --pass: #1b6536; --fail: #b01f17; --warn: #7d4700;
  --steel: #d5dde5; --bar: #6d8cad; --bar-governs: #1f5a9c; --bar-fails: #b01f17; --fill: #dbe6f2;
}
@media screen and (prefers-color-scheme: dark) {
  :root {
    --page: #14191f; --panel: #1d242c; --ink: #e4e9ee; --muted: #a7b3bf; --rule: #3f4b57;
    --link: #86b8f2; --pass: #7ed29a; --fail: #ff938a; --warn: #f5b768;
    --steel: #3a4754; --bar: #5d7f9f; --bar-governs: #86b8f2; --bar-fails: #ff938a; --fill: #22364b;
  }
}
)css";

constexpr std::string_view TEXTS = R"css(* { box-sizing: border-box; }
body { margin: 0 auto; padding: 8mm 6mm; max-width: 202mm; background: var(--page); color: var(--ink);
  font: 10pt/1.4 "Liberation Sans", Arial, Helvetica, "DejaVu Sans", sans-serif; }
a { color: var(--link); }
.skip { position: absolute; left: -999em; }
.skip:focus { left: 6mm; top: 2mm; background: var(--page); padding: 1mm 2mm; }
:focus-visible { outline: 2px solid var(--link); outline-offset: 2px; }
h1 { font-size: 17pt; margin: 0 0 3mm; }
h2 { font-size: 14pt; margin: 0 0 2mm; line-height: 1.25; overflow-wrap: anywhere; }
h3 { font-size: 11.5pt; margin: 7mm 0 2mm; padding-bottom: 1mm; border-bottom: 0.3mm solid var(--rule); break-after: avoid; }
h4 { font-size: 10.5pt; margin: 4mm 0 1mm; break-after: avoid; }
h5, h6 { font-size: 10pt; margin: 2mm 0 1mm; break-after: avoid; }
h6 { font-weight: normal; text-decoration: underline; }
p { margin: 0.6mm 0; overflow-wrap: anywhere; }
table { border-collapse: collapse; font-variant-numeric: tabular-nums; margin: 1mm 0; }
th, td { text-align: left; vertical-align: top; padding: 0.7mm 1.7mm; border-bottom: 0.2mm solid var(--rule); }
thead th { border-bottom: 0.4mm solid var(--ink); }
tbody th, .pairs th { font-weight: normal; color: var(--muted); }
td { overflow-wrap: break-word; }
th.n, td.n { text-align: right; overflow-wrap: normal; white-space: nowrap; }
tr { break-inside: avoid; }
.wide { width: 100%; }
.small { font-size: 8.5pt; }
.split table { font-size: 8.5pt; }
.split th, .split td { padding: 0.4mm 1.2mm; }
.block { border: 0.4mm solid var(--ink); width: 100%; }
.block th, .block td { border: 0.2mm solid var(--rule); overflow-wrap: anywhere; }
.block th { width: 25mm; white-space: nowrap; color: var(--muted); font-weight: normal; }
.block + .signatures { margin-top: -0.4mm; }
.signatures td:last-child { width: 45mm; }
caption { text-align: left; }
.inputs { font-size: 8.5pt; color: var(--muted); }
.hash { font-family: "Liberation Mono", "DejaVu Sans Mono", Menlo, Consolas, monospace; overflow-wrap: anywhere; }
.verdict { font-size: 12pt; margin: 3mm 0; padding: 2mm 3mm; background: var(--panel); border-left: 1.5mm solid var(--pass); }
.verdict.fails { border-left-color: var(--fail); }
.warnings { margin: 3mm 0; padding: 2mm 3mm; border: 0.6mm solid var(--warn); color: var(--warn); overflow-wrap: anywhere; }
.warnings ul { margin: 1mm 0; padding-left: 5mm; }
.pass, .fail, .name { white-space: nowrap; }
.pass { color: var(--pass); font-weight: bold; }
.fail, .red { color: var(--fail); font-weight: bold; }
.orange { color: var(--warn); }
.blue { color: var(--link); }
.muted, .small td { color: var(--muted); }
tr.governs td, tr.critical td { font-weight: bold; background: var(--panel); }
tr.governs td:first-child, tr.critical td:first-child { box-shadow: inset 1mm 0 var(--bar-governs); }
.meter { display: inline-block; width: 16mm; height: 2.6mm; margin-right: 2mm; background: var(--panel);
  border: 0.2mm solid var(--rule); }
.meter span { display: block; height: 100%; background: var(--bar-governs); }
.meter .over { background: var(--bar-fails); }
figure { margin: 2mm 0; break-inside: avoid; }
.split { display: flex; flex-wrap: wrap; gap: 4mm; align-items: flex-start; break-inside: avoid; }
)css";

constexpr std::string_view DRAWINGS = R"css(svg { display: block; max-width: 100%; height: auto; color: var(--ink); }
svg text { font-family: inherit; font-size: 2.8px; fill: var(--ink); }
svg .note { font-size: 2.6px; fill: var(--muted); }
svg .value, svg .strong, svg .name, svg .point { font-weight: bold; }
svg .name { font-size: 3.2px; }
svg .rule { font-size: 2.5px; }
svg .steel { fill: var(--steel); stroke: var(--ink); stroke-width: 0.3; }
svg .edge { stroke: var(--ink); stroke-width: 0.2; }
svg .hidden { stroke: var(--ink); stroke-width: 0.2; stroke-dasharray: 1.5 0.8; }
svg .axis { stroke: var(--muted); stroke-width: 0.15; stroke-dasharray: 4 1 0.8 1; fill: none; }
svg .station { stroke: var(--ink); stroke-width: 0.15; }
svg .dim { stroke: var(--ink); stroke-width: 0.15; }
svg .dot, svg .peak { fill: var(--ink); }
svg .support, svg .subspan { fill: var(--page); stroke: var(--ink); stroke-width: 0.3; }
svg .ground { stroke: var(--ink); stroke-width: 0.5; stroke-dasharray: 0.8 0.8; }
svg .wall { fill: none; stroke: var(--ink); stroke-width: 0.4; }
svg .part { stroke-dasharray: 0.8 0.5; }
svg .lateral { fill: var(--page); stroke: var(--link); stroke-width: 0.35; }
svg .cross { fill: none; stroke: var(--link); stroke-width: 0.3; }
svg .along { stroke: var(--link); stroke-width: 1; stroke-dasharray: 0.01 1.9; stroke-linecap: round; }
svg .warp { fill: var(--link); }
svg .twist { fill: none; stroke: var(--warn); stroke-width: 0.45; }
svg .load { fill: none; stroke: var(--fail); stroke-width: 0.4; }
svg .head { fill: var(--fail); }
svg .band { fill: var(--fail); fill-opacity: 0.1; stroke: var(--fail); stroke-width: 0.25; }
svg .over { paint-order: stroke; stroke: var(--page); stroke-width: 0.9; stroke-linejoin: round; }
svg .ghost { fill: none; stroke: var(--muted); stroke-width: 0.2; stroke-dasharray: 1 0.7; }
svg .buckled { fill: var(--steel); stroke: var(--ink); stroke-width: 0.2; fill-rule: evenodd; }
svg .flange { fill: none; stroke-width: 0.55; stroke-linejoin: round; }
svg .one { stroke: var(--link); }
svg .two { stroke: var(--warn); }
svg .flange.two { stroke-dasharray: 2.2 0.9; }
svg .centre { fill: none; stroke: var(--ink); stroke-width: 0.2; }
svg .leader { fill: none; stroke: var(--muted); stroke-width: 0.15; }
svg .brace { fill: var(--page); stroke: var(--link); stroke-width: 0.35; stroke-linejoin: round; }
svg .brace.two, svg .along.two, svg .along.twisted { stroke: var(--warn); }
svg .fill { fill: var(--fill); }
svg .curve { fill: none; stroke: var(--link); stroke-width: 0.35; stroke-linejoin: round; }
svg .unsure { stroke: var(--warn); stroke-dasharray: 1.6 0.9; }
svg .base { stroke: var(--ink); stroke-width: 0.25; }
svg .bar { fill: var(--bar); }
svg .governs { fill: var(--bar-governs); }
svg .fails { fill: var(--bar-fails); }
svg .limit { stroke: var(--fail); stroke-width: 0.35; stroke-dasharray: 1.4 0.8; }
svg .section .steel { fill-rule: evenodd; }
svg .section * { vector-effect: non-scaling-stroke; stroke-width: 1px; }
svg .section text { font-size: inherit; stroke: none; text-anchor: middle; dominant-baseline: middle; fill: var(--muted); }
svg .section .axis { stroke-width: 0.6px; stroke-dasharray: 9 2 2 2; }
svg .section .plastic { stroke: var(--warn); stroke-width: 0.6px; stroke-dasharray: 4 3; }
svg .section .principal { stroke: var(--link); stroke-width: 0.6px; }
svg .section .centroid { fill: var(--ink); stroke: none; }
)css";

constexpr std::string_view FOLDS_AND_PAPER = R"css(details { border-bottom: 0.2mm solid var(--rule); padding: 1mm 0; }
summary { cursor: pointer; break-after: avoid; }
summary h5 { display: inline; }
.result { float: right; font-variant-numeric: tabular-nums; }
.calculation { font-size: 9pt; }
.calculation i { color: var(--muted); }
.i1 { margin-left: 4mm; } .i2 { margin-left: 8mm; } .i3 { margin-left: 12mm; } .i4 { margin-left: 16mm; }
.i5 { margin-left: 20mm; } .i6 { margin-left: 24mm; } .i7 { margin-left: 28mm; } .i8 { margin-left: 32mm; }
.sheet { margin-top: 14mm; padding-top: 8mm; border-top: 0.8mm solid var(--ink); }
.only { margin-top: 0; padding-top: 0; border-top: 0; }
footer { margin-top: 10mm; color: var(--muted); font-size: 8.5pt; }
/* On a narrow screen tables and drawings keep a size at which they can be read, and scroll within themselves. */
@media screen and (max-width: 700px) {
  body { padding: 4mm; }
  h1 { font-size: 15pt; }
  table, figure { display: block; max-width: 100%; overflow-x: auto; }
  figure { margin: 2mm 0; }
  .wide td:not(.n):not(.name) { min-width: 34mm; }
  .small .wide td:not(.n):not(.name) { min-width: 0; }
  .signatures { display: table; }
  .signatures th { width: auto; }
  .signatures td:last-child { width: auto; white-space: nowrap; }
  svg.member, svg.diagram, svg.chart, svg.buckling { width: 640px; max-width: none; }
  .block:not(.signatures), .block:not(.signatures) tbody { display: block; }
  .block:not(.signatures) tr { display: grid; grid-template-columns: 25mm minmax(0, 1fr); }
  .block:not(.signatures) td[colspan] { display: none; }
  .result { float: none; display: block; }
  .i1, .i2, .i3, .i4, .i5, .i6, .i7, .i8 { margin-left: 3mm; }
  td { overflow-wrap: break-word; }
}
@media print, (min-width: 701px) {
  .brief .action { display: inline-block; width: 49%; vertical-align: top; }
  .brief svg.diagram .name, .brief svg.diagram .note, .brief svg.diagram .value { font-size: 4.2px; }
}
@media screen { .sheet { content-visibility: auto; contain-intrinsic-size: auto 2600px; } }
@page { size: A4; margin: 18mm 13mm 16mm; }
@media print {
  body { padding: 0; max-width: none; font-size: 9pt; }
  .sheet { break-before: page; margin-top: 0; padding-top: 0; border-top: 0; }
  .only { break-before: auto; }
  .skip, .back { display: none; }
  footer { margin-top: 4mm; break-inside: avoid; }
  details::details-content { content-visibility: visible; }
  summary { list-style: none; }
  .brief { font-size: 8.2pt; line-height: 1.2; }
  .brief .verdict { font-size: 10pt; margin: 2mm 0; padding: 1.2mm 3mm; }
  .brief h3 { margin: 2.2mm 0 0.8mm; padding-bottom: 0.4mm; font-size: 10pt; }
  .brief .wide, .brief .small { font-size: 7.4pt; }
  .brief h4, .brief h5 { margin: 1mm 0 0.5mm; font-size: 8.2pt; }
  .brief th, .brief td { padding: 0.15mm 1.5mm; }
  .brief figure { margin: 0.5mm 0; }
  .brief ul { margin: 0.5mm 0; padding-left: 5mm; }
  .brief p { margin: 0.3mm 0; }
  .brief .calculation { columns: 2; column-gap: 6mm; font-size: 7.3pt; }
  .brief .calculation p { margin: 0.15mm 0; }
  .brief .calculation h4 { break-after: avoid; }
  .brief details { padding: 0.4mm 0; }
  thead { display: table-header-group; }
  .bar, .fill, .steel, .buckled, .meter, .meter span, .verdict, tr.governs td, tr.critical td { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
}
)css";

// Of a drawing that stands by itself.
constexpr std::string_view FRAME =
    R"css(svg { background: var(--page); font: 10pt "Liberation Sans", Arial, Helvetica, "DejaVu Sans", sans-serif; }
)css";

std::string Joined(std::initializer_list<std::string_view> parts)
{
    std::string text;
    for (const std::string_view part : parts)
        text += part;
    return text;
}

} // namespace

std::string ReportStyle() { return Joined({PALETTES, TEXTS, DRAWINGS, FOLDS_AND_PAPER}); }

std::string DrawingStyle() { return Joined({PALETTES, FRAME, DRAWINGS}); }

} // namespace Keltrix::Host
