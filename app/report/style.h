#pragma once

namespace app::report {

// How a page looks.
inline constexpr const char* kStyle = R"(
:root { color: #1d2733; background: #fff; font: 15px/1.5 system-ui, "Segoe UI", "DejaVu Sans", sans-serif; }
body { margin: 0; }
main, footer { max-width: 1080px; margin: 0 auto; padding: 0 24px; }
h1 { font-size: 26px; line-height: 1.25; margin: 32px 0 12px; overflow-wrap: anywhere; }
h2 { font-size: 18px; margin: 40px 0 10px; padding-bottom: 4px; border-bottom: 1px solid #d5dbe3; }
p, li, dd { overflow-wrap: anywhere; }
.outcome { display: inline-block; margin: 0 0 8px; padding: 4px 12px; border-left: 5px solid; font-weight: 600; }
.outcome::first-letter { text-transform: uppercase; }
.good { border-color: #2c7a4b; background: #eaf5ee; }
.fair { border-color: #a86a00; background: #fdf4e3; }
.bad { border-color: #b3261e; background: #fcebea; }
dl { display: flex; flex-wrap: wrap; gap: 10px 36px; margin: 12px 0; }
dt { font-size: 13px; color: #5a6776; }
dd { margin: 0; font-size: 17px; font-variant-numeric: tabular-nums; }
ul { margin: 0; padding-left: 20px; }
.warn { color: #8a4b00; font-weight: 600; }
.cut { color: #5a6776; font-size: 13px; margin: 6px 0; }
.wide { overflow-x: auto; margin: 6px -12px; }
summary { cursor: pointer; color: #5a6776; }
table { border-collapse: collapse; font-size: 14px; }
th, td { padding: 3px 12px; text-align: left; vertical-align: top; }
td:not(.n) { overflow-wrap: anywhere; min-width: 6em; }
td.long:not(.n) { min-width: 17em; }
th { font-weight: 600; color: #5a6776; border-bottom: 1px solid #d5dbe3; }
tbody tr:nth-child(even) { background: #f6f8fa; }
.n { text-align: right; white-space: nowrap; font-variant-numeric: tabular-nums; }
.pair { display: flex; flex-wrap: wrap; gap: 16px 64px; }
.search { display: grid; grid-template-columns: minmax(0, 1fr) auto; gap: 24px; align-items: start; }
figure { margin: 0; overflow-x: auto; }
svg { display: block; width: 100%; min-width: 560px; height: auto; }
svg text { font-size: 12px; fill: #47525f; }
svg .middle { text-anchor: middle; }
svg .end { text-anchor: end; }
svg path { fill: none; }
svg .grid { stroke: #e6eaef; }
svg .axis { stroke: #8793a1; }
svg .incumbent { stroke: #1b5e9e; stroke-width: 2; }
svg .bound { stroke: #c4590a; stroke-width: 2; }
svg .gap { fill: #1b5e9e; fill-opacity: 0.08; }
svg circle { fill: #1b5e9e; }
footer { margin-top: 48px; padding-top: 10px; padding-bottom: 28px; color: #5a6776; font-size: 13px; overflow-wrap: anywhere; }
@media (max-width: 760px) { .search { grid-template-columns: minmax(0, 1fr); } main, footer { padding: 0 14px; } }
)";

}  // namespace app::report
