#include "html/style.h"

namespace krnqb::html {
namespace {

constexpr std::string_view styleSheet = R"css(
:root {
  color-scheme: light dark;
  --paper: #ffffff; --raised: #f4f6f8; --ink: #1a1e23; --pale: #525c66; --line: #cfd6dd; --link: #0b57a4;
  --good: #12643f; --caution: #7d4a00; --bad: #a01822;
  --c0: #1f6f50; --c1: #b45f06; --c2: #8e3a80; --c3: #1d4fa3;
}
@media (prefers-color-scheme: dark) {
  :root {
    --paper: #14181d; --raised: #1e242b; --ink: #e7ebef; --pale: #a9b4bf; --line: #3b454f; --link: #7fb8f5;
    --good: #6cd3a0; --caution: #f0b355; --bad: #ff9a9a;
    --c0: #4fc08d; --c1: #efa04b; --c2: #dc8fcf; --c3: #82aef5;
  }
}
* { box-sizing: border-box; }
html { -webkit-text-size-adjust: 100%; text-size-adjust: 100%; }
body {
  margin: 0 auto; padding: 1.5rem 1.25rem 3rem; max-width: 80rem; background: var(--paper); color: var(--ink);
  font: 1rem/1.5 "Segoe UI", "Helvetica Neue", "Liberation Sans", Arial, system-ui, sans-serif;
}
h1 { font-size: 1.7rem; line-height: 1.25; margin: 0 0 .75rem; overflow-wrap: anywhere; }
h2 { font-size: 1.3rem; line-height: 1.3; margin: 2.25rem 0 .75rem; padding-top: .75rem; border-top: 1px solid var(--line); }
h3 { font-size: 1.08rem; margin: 1.5rem 0 .5rem; }
p { margin: .5rem 0; max-width: 60rem; overflow-wrap: anywhere; }
a { color: var(--link); }
:focus-visible { outline: 3px solid var(--link); outline-offset: 2px; }
.remark, footer { color: var(--pale); font-size: .9rem; }
nav ul { display: flex; flex-wrap: wrap; gap: .25rem 1.25rem; list-style: none; margin: 1rem 0 0; padding: 0; }
main ul { margin: .5rem 0; padding-left: 1.25rem; }
li { margin: .25rem 0; overflow-wrap: anywhere; }
dl { display: grid; grid-template-columns: repeat(auto-fill, minmax(19rem, 1fr)); gap: .4rem 2rem; margin: .75rem 0; }
dl > div { min-width: 0; }
dt { color: var(--pale); font-size: .85rem; }
dd { margin: 0; overflow-wrap: anywhere; }
.box { border: 1px solid var(--line); border-left: .4rem solid var(--pale); border-radius: .3rem; padding: .5rem 1rem; margin: .75rem 0; background: var(--raised); }
.box.good { border-left-color: var(--good); }
.box.caution { border-left-color: var(--caution); }
.box.bad { border-left-color: var(--bad); }
.badge { display: inline-block; border: 1px solid currentColor; border-radius: .3rem; padding: 0 .5rem; font-size: .9rem; font-weight: 600; }
.badge.good { color: var(--good); }
.badge.caution { color: var(--caution); }
.badge.bad { color: var(--bad); }
.scroll { overflow-x: auto; margin: .75rem 0; }
table { border-collapse: collapse; font-size: .78rem; line-height: 1.35; min-width: min(30rem, 100%); }
caption { text-align: left; font-weight: 600; padding: 0 0 .35rem; font-size: .95rem; }
th, td { padding: .25rem .3rem; text-align: left; vertical-align: top; border-bottom: 1px solid var(--line); }
th { font-weight: 500; }
thead th { font-weight: 600; background: var(--raised); vertical-align: bottom; }
tbody th { min-width: 6rem; max-width: 18rem; overflow-wrap: anywhere; }
th:first-child { position: sticky; left: 0; background: var(--paper); }
thead th:first-child { background: var(--raised); }
td { min-width: 4rem; overflow-wrap: anywhere; }
.n { min-width: 0; text-align: right; white-space: nowrap; font-variant-numeric: tabular-nums; }
del, ins { text-decoration: none; }
del { color: var(--pale); }
del::after { content: " \2192"; }
.total th, .total td { font-weight: 700; border-top: 2px solid var(--pale); }
.group th { font-weight: 700; padding-top: .7rem; max-width: none; }
details { margin: .3rem 0; border-left: 3px solid var(--line); padding-left: .6rem; }
summary { cursor: pointer; padding: .1rem 0; overflow-wrap: anywhere; }
details[open] > summary { font-weight: 600; }
svg { display: block; width: 100%; min-width: 40rem; max-width: 60rem; height: auto; margin: .75rem 0; }
svg text { font-size: 12px; fill: var(--ink); font-family: inherit; }
.axis { stroke: var(--line); stroke-width: 1; }
.zero { stroke: var(--pale); stroke-width: 1; }
.f0 { fill: var(--c0); } .f1 { fill: var(--c1); } .f2 { fill: var(--c2); } .f3 { fill: var(--c3); }
.s0, .s1, .s2, .s3 { fill: none; stroke-width: 2.5; stroke-linejoin: round; }
.s0 { stroke: var(--c0); } .s1 { stroke: var(--c1); } .s2 { stroke: var(--c2); } .s3 { stroke: var(--c3); }
.dashed { stroke-dasharray: 5 4; }
@page { size: landscape; margin: 12mm; }
@media print {
  :root {
    --paper: #ffffff; --raised: #f4f6f8; --ink: #000000; --pale: #434b53; --line: #b6bec6; --link: #000000;
    --good: #12643f; --caution: #7d4a00; --bad: #a01822;
    --c0: #1f6f50; --c1: #b45f06; --c2: #8e3a80; --c3: #1d4fa3;
  }
  body { max-width: none; padding: 0; font-size: 10pt; }
  nav { display: none; }
  .scroll { overflow: visible; }
  th:first-child { position: static; }
  table { font-size: 7.5pt; }
  .wide { font-size: 6.2pt; }
  th, td { padding: .15rem .2rem; }
  tbody th { min-width: 4rem; }
  td { min-width: 0; }
  thead { display: table-header-group; }
  tr, svg, .box, summary { break-inside: avoid; }
  h2, h3, caption, summary { break-after: avoid; }
  a { text-decoration: none; }
  svg { max-width: 22cm; }
}
)css";

// A test compares it with the style sheet and, when that has changed, prints what belongs here.
constexpr std::string_view styleDigest = "qT7KBoRJV69UA/jrQAW62ldSwuzLS2U7qG4StRZkCpU=";

}  // namespace

std::string_view StyleSheet() noexcept {
  return styleSheet;
}

std::string_view StyleDigest() noexcept {
  return styleDigest;
}

}  // namespace krnqb::html
