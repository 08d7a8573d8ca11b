#include "tools/doc/style.h"

const std::string_view kStyleSheet = R"css(
:root {
  color-scheme: light dark;
  --paper: #ffffff;
  --panel: #f4f6f9;
  --ink: #1b2330;
  --quiet: #566176;
  --line: #d3dae4;
  --accent: #1f5fbf;
  --error: #b3261e;
  --critical: #a14400;
  --warning: #7d6000;
  --info: #1f5fbf;
  --wave: #1d5fa8;
  --inside: #e8f1fc;
  --released: #a85508;
}
@media (prefers-color-scheme: dark) {
  :root {
    --paper: #12161d;
    --panel: #1c222c;
    --ink: #e4e9f1;
    --quiet: #9fabbd;
    --line: #364151;
    --accent: #82b1ff;
    --error: #ff8a80;
    --critical: #ffab70;
    --warning: #e8c547;
    --info: #82b1ff;
    --wave: #79b8ff;
    --inside: #1b2a3b;
    --released: #f2ae5a;
  }
}
* { box-sizing: border-box; }
html { -webkit-text-size-adjust: 100%; text-size-adjust: 100%; }
body {
  margin: 0 auto;
  padding: 1.5rem 1.25rem 4rem;
  max-width: 72rem;
  background: var(--paper);
  color: var(--ink);
  font: 1rem/1.5 system-ui, -apple-system, "Segoe UI", Roboto, "Liberation Sans", sans-serif;
  overflow-wrap: anywhere;
}
h1, h2, h3 { line-height: 1.25; text-wrap: balance; }
h1 { margin: 0; font-size: 2rem; }
h2 { margin: 2.5rem 0 0.75rem; padding-bottom: 0.3rem; border-bottom: 2px solid var(--line); font-size: 1.4rem; }
h3 { margin: 1.5rem 0 0.5rem; font-size: 1.1rem; }
p { margin: 0.5rem 0; max-width: 46rem; }
a { color: var(--accent); }
code, .symbol text, .wave text { font-family: ui-monospace, "SF Mono", Menlo, Consolas, "Liberation Mono", monospace; }
code { font-size: 0.9em; white-space: pre-wrap; }
header { padding-bottom: 1rem; border-bottom: 4px solid var(--accent); }
.subtitle { margin: 0.25rem 0; font-size: 1.15rem; }
.origin { margin: 0; color: var(--quiet); font-size: 0.9rem; }
nav { margin: 1.25rem 0; padding: 0.75rem 1rem; border-radius: 6px; background: var(--panel); }
nav h2 { margin: 0 0 0.4rem; padding: 0; border: 0; font-size: 1rem; }
nav ol { margin: 0; padding-left: 1.5rem; columns: 3 9rem; }
nav li { padding: 0.1rem 0; }
.alert { margin: 0.75rem 0 0; padding: 0.5rem 0.9rem; max-width: none; border-left: 4px solid var(--warning); border-radius: 0 4px 4px 0; background: var(--panel); }
.alert.error { border-color: var(--error); }
td a, th a, p a, figcaption a, dd a { text-decoration-thickness: 1px; text-decoration-color: var(--line); text-underline-offset: 0.2em; }
a:hover { text-decoration-color: currentcolor; }
:target { scroll-margin-top: 1rem; background: var(--inside); }
article:target { background: none; outline: 2px solid var(--accent); outline-offset: 0.5rem; }
.group { margin-left: 0.2em; }
.time, .time code { white-space: nowrap; }
.cases { display: flex; flex-wrap: wrap; gap: 0 0.25rem; }
.cases > input { position: absolute; opacity: 0; pointer-events: none; }
.cases > label { order: 1; padding: 0.25rem 0.75rem; border: 1px solid var(--line); border-radius: 6px 6px 0 0; color: var(--quiet); font-size: 0.9rem; cursor: pointer; }
.cases > input:checked + label { border-bottom-color: var(--accent); background: var(--panel); color: var(--ink); box-shadow: inset 0 -2px var(--accent); }
.cases > input:focus-visible + label { outline: 2px solid var(--accent); outline-offset: 1px; }
.cases > .case { order: 2; flex: 0 0 100%; min-width: 0; }
.cases > input:not(:checked) + label + .case { display: none; }
article + article { margin-top: 2rem; }
.scroll { overflow-x: auto; margin: 0.75rem 0; }
table { width: 100%; border-collapse: separate; border-spacing: 0; font-size: 0.9rem; overflow-wrap: normal; }
.long { overflow-wrap: anywhere; }
th, td { padding: 0.4rem 0.75rem 0.4rem 0; border-top: 1px solid var(--line); text-align: left; vertical-align: top; }
thead th { border-top: 0; color: var(--quiet); font-weight: 600; white-space: nowrap; }
tbody tr:first-child > * { border-top: 2px solid var(--quiet); }
tbody th { font-weight: 600; }
td:last-child, th:last-child { padding-right: 0; }
.rule-table tbody th, .stimulus tbody th, .problems tbody th { font-weight: 400; }
.scroll:not(.picture) { border-bottom: 1px solid var(--line); }
.rules { margin: 0; padding-left: 1.1rem; min-width: 13rem; }
.rules li { padding: 0.05rem 0; }
figure { margin: 1rem 0; }
figcaption { margin: 0 auto; max-width: 46rem; color: var(--quiet); font-size: 0.9rem; text-align: center; }
.picture { padding: 0.5rem 0; text-align: center; }
.picture .symbol { height: auto; min-width: 20rem; max-width: 100%; }
.note { color: var(--quiet); font-size: 0.9rem; }
.facts { display: flex; flex-wrap: wrap; gap: 0.5rem 2rem; margin: 0.5rem 0; font-size: 0.9rem; }
.facts dt { color: var(--quiet); font-size: 0.85rem; }
.facts dd { margin: 0; }
.branch { margin: 0.5rem 0; padding-left: 0.9rem; border-left: 3px solid var(--line); }
.condition { margin: 0.25rem 0; color: var(--quiet); font-size: 0.9rem; }
.messages { margin: 0.5rem 0; padding: 0; list-style: none; }
.messages li { margin: 0.5rem 0; padding: 0.4rem 0.9rem; border-left: 4px solid var(--line); border-radius: 0 4px 4px 0; background: var(--panel); }
.messages p { margin: 0.2rem 0; }
.messages.error li { border-color: var(--error); }
.messages.critical li { border-color: var(--critical); }
.messages.warning li { border-color: var(--warning); }
.messages.info li { border-color: var(--info); }
.symbol { font-size: 13px; }
.symbol text { fill: var(--ink); }
.symbol .box { fill: var(--panel); stroke: var(--ink); stroke-width: 1.5; }
.symbol .function { font-size: 15px; font-weight: 700; text-anchor: middle; }
.symbol .end { text-anchor: end; }
.symbol .width { fill: var(--quiet); font-size: 11px; text-anchor: middle; }
.symbol .wire { stroke: var(--ink); stroke-width: 1.2; }
.symbol .bus { stroke-width: 3; }
.symbol .slash { stroke: var(--ink); stroke-width: 1.2; }
.symbol .arrow { fill: var(--ink); }
.symbol .clock { fill: none; stroke: var(--ink); stroke-width: 1.5; }
.symbol .optional .wire { stroke-dasharray: 4 3; stroke: var(--quiet); }
.symbol .optional .arrow { fill: var(--quiet); }
.symbol .optional .name { fill: var(--quiet); }
.wave { display: block; margin: 0 auto; font-size: 12px; }
.wave text { fill: var(--ink); }
.wave .tick { fill: var(--quiet); font-size: 11px; }
.wave .value { text-anchor: middle; }
.wave .grid { stroke: var(--line); fill: none; }
.wave .axis { stroke: var(--quiet); fill: none; }
.wave .level, .wave .bus, .wave .released, .wave .undriven { stroke-width: 1.5; stroke-linejoin: round; fill: none; }
.wave .level, .wave .bus { stroke: var(--wave); }
.wave .inside { fill: var(--inside); }
.wave .released { stroke: var(--released); stroke-dasharray: 5 3; }
.wave .undriven { stroke: var(--quiet); stroke-dasharray: 1.5 4; }
.wave .crowded { fill: var(--wave); fill-opacity: 0.55; }
@media screen and (min-width: 76rem) {
  body { display: grid; grid-template-columns: 11rem minmax(0, 1fr); column-gap: 2rem; align-content: start; max-width: 86rem; }
  header { grid-column: 1 / -1; }
  nav { position: sticky; top: 1rem; align-self: start; max-height: calc(100vh - 2rem); overflow-y: auto; padding: 0.6rem 0.8rem; font-size: 0.9rem; }
  nav ol { columns: auto; padding-left: 0; list-style: none; }
  main { grid-column: 2; min-width: 0; }
  main > section:first-child > h2 { margin-top: 1.25rem; }
}
@media screen and (max-width: 72rem) {
  .many thead { display: none; }
  .many tbody tr { display: grid; grid-template-columns: repeat(auto-fill, minmax(7.5rem, 1fr)); column-gap: 1rem; padding: 0.5rem 0; border-top: 1px solid var(--line); }
  .many tbody tr > * { min-width: 0; padding: 0.1rem 0; border: 0; overflow-wrap: anywhere; }
  .many tbody tr:first-child, .many tbody tr:first-child > * { border: 0; }
  .many tbody th { grid-column: 1 / -1; }
  .many td:empty { display: none; }
  .many td:has(ul) { grid-column: 1 / -1; }
  .many td::before { content: attr(data-label); display: block; color: var(--quiet); font-size: 0.85em; }
  .rule-table.many tbody tr { grid-template-columns: repeat(auto-fill, minmax(min(15rem, 100%), 1fr)); }
}
@media screen and (max-width: 48rem) {
  .rules { min-width: 8rem; }
  th, td { padding-right: 0.5rem; }
}
@media screen and (max-width: 40rem) {
  table:not(.many) thead { display: none; }
  table:not(.many), table:not(.many) tbody, table:not(.many) tr { display: block; }
  table:not(.many) tr { padding: 0.5rem 0; border-top: 1px solid var(--line); }
  table:not(.many) tr > * { display: block; padding: 0.1rem 0; border: 0; overflow-wrap: anywhere; }
  table:not(.many) tbody tr:first-child, table:not(.many) tbody tr:first-child > * { border: 0; }
  table:not(.many) td:empty { display: none; }
  table:not(.many) td::before { content: attr(data-label); display: block; color: var(--quiet); font-size: 0.85em; }
}
@page { margin: 16mm 14mm; }
@media print {
  :root {
    color-scheme: light;
    --paper: #ffffff;
    --panel: #f4f6f9;
    --ink: #000000;
    --quiet: #444c58;
    --line: #b8bfc9;
    --accent: #1b4f9c;
    --wave: #14508f;
    --inside: #e8f1fc;
    --released: #8a4500;
  }
  html { font-size: 10pt; }
  body { max-width: none; padding: 0; }
  h1, h2, h3, thead, .facts, :has(+ figure), :has(+ .cases) { break-after: avoid; }
  article > :has(+ .branch) { break-after: avoid; }
  tr, li, svg, figure, .facts, .branch { break-inside: avoid; }
  tbody tr:first-child, tbody tr:nth-last-child(2) { break-after: avoid; }
  table:not(:has(tbody tr:nth-child(4))) { break-inside: avoid; }
  p, li { orphans: 3; widows: 3; }
  .cases { display: block; }
  .cases > input, .cases > label { display: none; }
  .cases > input:not(:checked) + label + .case { display: block; }
  .picture svg { min-width: 0; max-width: 100%; height: auto; }
  a { color: inherit; text-decoration: none; }
  .scroll { overflow: visible; }
  .rules { min-width: 0; }
  table { font-size: 8pt; }
  td:last-child, .rule-table td + td + td { overflow-wrap: anywhere; }
  .messages li { background: none; }
}
)css";
