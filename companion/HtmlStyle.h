// The look of the HTML reports.
#pragma once

#include <string_view>

namespace loader {

inline constexpr std::string_view HtmlStyle = R"css(
:root {
  color-scheme: light dark;
  --paper: #f5f6f8; --sheet: #ffffff; --ink: #1b2129; --faint: #5c6672; --line: #d7dce2; --head: #e9edf2;
  --a: #9c2f1f; --a-soft: #fbeae6; --b: #1c6b3c; --b-soft: #e5f4ea;
  --changed: #8a5a00; --changed-soft: #fff3d6; --reads: #3552a3; --reads-soft: #e8edfb;
}
@media (prefers-color-scheme: dark) {
  :root {
    --paper: #14181d; --sheet: #1c2229; --ink: #e4e8ed; --faint: #9aa5b1; --line: #37414c; --head: #28313a;
    --a: #ff9d8a; --a-soft: #3d2320; --b: #86d9a3; --b-soft: #1b3626;
    --changed: #f2c15c; --changed-soft: #3a3019; --reads: #a3b9ff; --reads-soft: #242e4b;
  }
}
* { box-sizing: border-box; }
html { scroll-padding-top: .5rem; }
body {
  margin: 0 auto; padding: 1.5rem clamp(.75rem, 3vw, 2.5rem) 3rem; max-width: 84rem;
  background: var(--paper); color: var(--ink); font-size: 15px; line-height: 1.5;
  font-family: system-ui, "Hiragino Sans", "Noto Sans CJK JP", "Noto Sans JP", "Yu Gothic UI", Meiryo, sans-serif;
}
p, ul { margin: 0; padding: 0; }
ul { list-style: none; }
h1 { margin: 0; font-size: 1.7rem; line-height: 1.25; }
.made, .model, .note, footer { color: var(--faint); font-size: .85rem; }
.setups { display: grid; grid-template-columns: 1fr 1fr; gap: .75rem; margin: 1rem 0; }
.setup {
  display: flex; gap: .8rem; padding: .75rem 1rem; background: var(--sheet);
  border: 1px solid var(--line); border-left: 5px solid; border-radius: 6px; overflow-wrap: anywhere;
}
.setup.a { border-left-color: var(--a); }
.setup.b { border-left-color: var(--b); }
.letter { font-size: 1.5rem; font-weight: 700; line-height: 1.2; white-space: nowrap; }
.a .letter { color: var(--a); }
.b .letter { color: var(--b); }
.file { font-weight: 600; }
.counts { display: flex; flex-wrap: wrap; gap: .5rem; }
.counts li {
  padding: .25rem .8rem; background: var(--sheet); border: 1px solid var(--line); border-radius: 1.2rem;
}
.counts b { font-size: 1.15rem; font-variant-numeric: tabular-nums; }
.counts .changed b { color: var(--changed); }
.counts .reads b { color: var(--reads); }
.counts .only-a b, .counts .lost b { color: var(--a); }
.counts .only-b b, .counts .good b { color: var(--b); }
.counts .none, .counts .none b { color: var(--faint); font-weight: 400; }
.summary { margin-top: .75rem; }
nav { margin-top: 1rem; }
nav ul { display: flex; flex-wrap: wrap; gap: .25rem 1.25rem; }
a { color: inherit; text-decoration-color: var(--faint); text-underline-offset: .2em; }
.size { color: var(--faint); font-weight: 400; font-size: .85rem; font-variant-numeric: tabular-nums; }
section { margin-top: 1.75rem; }
h2 {
  position: sticky; top: 0; z-index: 2; height: 2.75rem; margin: 0; padding: .6rem 0; font-size: 1.15rem;
  line-height: 1.55rem; background: var(--paper); white-space: nowrap; overflow: hidden; text-overflow: ellipsis;
}
table {
  width: 100%; border-collapse: separate; border-spacing: 0; table-layout: fixed; background: var(--sheet);
  border: 1px solid var(--line); border-radius: 6px;
}
th, td { padding: .4rem .75rem; text-align: left; vertical-align: top; overflow-wrap: anywhere; }
thead th {
  position: sticky; top: 2.75rem; z-index: 1; background: var(--head); font-size: .85rem;
  border-bottom: 1px solid var(--line);
}
th.name { width: 40%; }
thead .verdict { width: 8.5rem; }
tbody tr:not(:last-child) > *, tbody:not(:last-child) tr:last-child > * { border-bottom: 1px solid var(--line); }
tbody th { font-weight: 500; }
tr.subgroup th { background: var(--head); font-weight: 600; font-size: .85rem; }
code {
  font: .72rem/1 ui-monospace, "Cascadia Mono", Consolas, "DejaVu Sans Mono", monospace; color: var(--faint);
  white-space: nowrap;
}
.text { white-space: pre-wrap; font-variant-numeric: tabular-nums; }
td .note, th .note { display: block; font-weight: 400; overflow-wrap: anywhere; }
tr.changed td.a, tr.only-a td.a, tr.lost td.a { background: var(--a-soft); }
tr.changed td.b, tr.only-b td.b, tr.good td.b { background: var(--b-soft); }
tr.changed td.a .text, tr.only-a td.a .text, tr.lost td.a .text { color: var(--a); font-weight: 600; }
tr.changed td.b .text, tr.only-b td.b .text, tr.good td.b .text { color: var(--b); font-weight: 600; }
tr.reads td.a, tr.reads td.b { background: var(--reads-soft); }
tr.reads td .text { color: var(--reads); font-weight: 600; }
td.absent, td.absent .text { background: none; color: var(--faint); font-weight: 400; font-style: italic; }
td.verdict { font-size: .85rem; }
footer { margin-top: 2rem; }
@media screen and (max-width: 44rem) {
  .setups { grid-template-columns: 1fr; }
  thead { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); }
  table, tbody, tr, tbody th, td { display: block; width: auto; }
  tbody tr { padding: .5rem 0; border-bottom: 1px solid var(--line); }
  tbody tr > * { border: 0 !important; }
  tbody th, td { padding: .15rem .75rem; }
  td.a, td.b { display: grid; grid-template-columns: minmax(3.5rem, max-content) 1fr; gap: 0 .6rem; }
  td.a::before, td.b::before { content: attr(data-of); color: var(--faint); font-size: .85rem; }
  td .note { grid-column: 2; }
  td.verdict { color: var(--faint); }
}
@media print {
  :root {
    --paper: #fff; --sheet: #fff; --ink: #000; --faint: #444; --line: #999; --head: #fff;
    --a: #000; --b: #000; --changed: #000; --reads: #000;
    --a-soft: #fff; --b-soft: #fff; --changed-soft: #fff; --reads-soft: #fff;
  }
  @page { margin: 14mm 12mm; }
  body { max-width: none; padding: 0 1px; font-size: 9.5pt; }
  nav { display: none; }
  section { margin-top: 6mm; }
  h2, thead th { position: static; }
  h2 { break-after: avoid; height: auto; padding: 1mm 0; }
  table { border-collapse: collapse; border-radius: 0; }
  thead { display: table-header-group; }
  thead th { border-bottom: 1.5pt solid #000; }
  tr { break-inside: avoid; }
  tr.subgroup { break-after: avoid; }
  tr.changed td.b .text, tr.only-b td.b .text, tr.reads td.b .text { text-decoration: underline; }
}
)css";

} // namespace loader
