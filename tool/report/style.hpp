#pragma once

namespace campotipo::tool {

// The one page has to look right on a phone, on a wide screen and on paper, with nothing fetched.
constexpr const char *kStyle = R"css(
:root { --ink: #1c2430; --soft: #5a6675; --line: #dfe4ea; --paper: #ffffff; --back: #f4f6f9;
  --accent: #2f6fde; --good: #1d7f4e; --good-back: #e6f5ec; --bad: #b3261e; --bad-back: #fdecea; }
* { box-sizing: border-box; }
html { -webkit-text-size-adjust: 100%; }
body { margin: 0; background: var(--back); color: var(--ink);
  font: 15px/1.5 system-ui, -apple-system, "Segoe UI", Roboto, "Helvetica Neue", sans-serif; }
main { max-width: 1080px; margin: 0 auto; padding: 24px 16px 64px; }
h1 { font-size: 1.6rem; line-height: 1.2; margin: 0 0 4px; overflow-wrap: anywhere; }
h2 { font-size: 1.1rem; margin: 0 0 12px; }
h3 { font-size: .95rem; margin: 0; overflow-wrap: anywhere; }
.soft { color: var(--soft); }
section { background: var(--paper); border: 1px solid var(--line); border-radius: 12px;
  padding: 20px; margin-top: 16px; }
.tiles { display: grid; grid-template-columns: repeat(auto-fit, minmax(140px, 1fr)); gap: 12px;
  margin-top: 16px; }
.tile { background: var(--paper); border: 1px solid var(--line); border-radius: 12px;
  padding: 12px 16px; }
.tile b { display: block; font-size: 1.35rem; font-variant-numeric: tabular-nums; }
.tile.good { background: var(--good-back); border-color: #bfe5cf; color: var(--good); }
.tile.bad { background: var(--bad-back); border-color: #f5c6c2; color: var(--bad); }
.scroll { overflow-x: auto; }
.picture svg { min-width: 640px; width: 100%; height: auto; display: block; }
table { border-collapse: collapse; width: 100%; font-size: .88rem; }
th, td { text-align: left; padding: 6px 12px 6px 0; border-bottom: 1px solid var(--line);
  vertical-align: top; }
th { color: var(--soft); font-weight: 600; white-space: nowrap; }
td.n, th.n { text-align: right; font-variant-numeric: tabular-nums; }
td.v { font-family: ui-monospace, "DejaVu Sans Mono", Menlo, Consolas, monospace;
  font-size: .82rem; overflow-wrap: anywhere; }
table.samples td { white-space: nowrap; max-width: 28em; overflow: hidden;
  text-overflow: ellipsis; }
.badge { display: inline-block; padding: 1px 8px; border-radius: 99px; background: var(--bad-back);
  color: var(--bad); font-weight: 600; font-variant-numeric: tabular-nums; }
.fields { display: grid; grid-template-columns: repeat(auto-fill, minmax(260px, 1fr)); gap: 12px; }
.field { border: 1px solid var(--line); border-radius: 10px; padding: 14px; min-width: 0; }
.field header { display: flex; justify-content: space-between; gap: 8px; align-items: baseline; }
.kind { font-size: .75rem; padding: 1px 8px; border-radius: 99px; color: #2b3542;
  white-space: nowrap; }
dl { display: grid; grid-template-columns: auto 1fr; gap: 1px 12px; margin: 8px 0; font-size: .85rem; }
dt { color: var(--soft); } dd { margin: 0; text-align: right; overflow-wrap: anywhere;
  font-variant-numeric: tabular-nums; }
svg.bars { width: 100%; height: 48px; display: block; }
svg.bars rect { fill: var(--accent); opacity: .8; } svg.bars path { stroke: var(--line); }
.ends { display: flex; justify-content: space-between; gap: 8px; font-size: .72rem;
  color: var(--soft); }
.shares { list-style: none; margin: 8px 0 0; padding: 0; font-size: .8rem; }
.shares li { position: relative; display: flex; justify-content: space-between; gap: 8px;
  padding: 2px 6px; margin-bottom: 2px; }
.shares span, .shares b { position: relative; min-width: 0; overflow-wrap: anywhere; }
.shares .fill { position: absolute; inset: 0 auto 0 0; background: #2f6fde22; border-radius: 4px; }
footer { margin-top: 24px; font-size: .8rem; color: var(--soft); }
@media (max-width: 520px) { main { padding: 16px 10px 40px; } section { padding: 14px; }
  h1 { font-size: 1.3rem; } .findings thead { display: none; }
  .findings tr { display: block; padding: 8px 0; border-bottom: 1px solid var(--line); }
  .findings td { display: block; border: none; padding: 1px 0; text-align: left; }
  .findings td:first-child { font-weight: 600; } .findings td.n { float: right; margin-top: -44px; } }
@media print { body { background: #fff; font-size: 10pt; } main { max-width: none; padding: 0; }
  section { border: none; padding: 0; margin-top: 18px; } .field, .tile, tr { break-inside: avoid; }
  .picture svg { min-width: 0; } .scroll { overflow: visible; }
  table.samples td { white-space: normal; }
  * { -webkit-print-color-adjust: exact; print-color-adjust: exact; } }
)css";

}  // namespace campotipo::tool
