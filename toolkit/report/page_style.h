/// The look of a report.
#ifndef MCBIN_TOOLKIT_REPORT_PAGE_STYLE_H
#define MCBIN_TOOLKIT_REPORT_PAGE_STYLE_H

namespace mcbin {

/// Dark on white; the charts of an attribute stand side by side where there is room. Left to the
/// charts are the fills of the classes.
inline constexpr const char* kPageStyle = R"css(
*{box-sizing:border-box}
html{color-scheme:light;-webkit-text-size-adjust:100%}
body{margin:0 auto;max-width:66rem;padding:1rem;background:#fff;color:#111;
 font:16px/1.45 system-ui,-apple-system,"Segoe UI",Roboto,"Liberation Sans",Arial,sans-serif}
h1,h2,h3,p,li,figcaption{overflow-wrap:anywhere}
h1,h2{line-height:1.2;unicode-bidi:isolate}
h1{font-size:1.6rem;margin:.5rem 0}
h2{font-size:1.25rem;margin:1.5rem 0 .25rem}
section h2{margin-top:0}
p{margin:.25rem 0}
a{color:#0b4a8f}
section{border-top:2px solid #111;margin-top:2rem;padding-top:.75rem}
.note{border-left:4px solid #111;padding-left:.6rem;margin:.5rem 0}
.small{font-size:.85rem;color:#333}
.charts{display:flex;flex-wrap:wrap;gap:1rem 2rem;margin:.75rem 0}
figure{margin:0;flex:1 1 300px;min-width:0;max-width:480px}
figcaption{font-size:.85rem;color:#333;margin-bottom:.25rem}
svg{display:block;width:100%;height:auto;overflow:visible}
svg text{font-size:12px;fill:#111;font-variant-numeric:tabular-nums}
svg text.mid{text-anchor:middle}
svg text[class*=" t"]{font-weight:600;stroke-width:4px;paint-order:stroke;stroke-linejoin:round}
svg.inline{display:inline-block;width:60px;height:10px;margin-right:.4rem}
svg.sample{display:inline-block;width:16px;height:16px;margin-right:.3rem;vertical-align:-3px}
svg.defs{position:absolute;width:0;height:0}
.bar{fill:#4a4a4a}
.bin{fill:#c3cfdd;stroke:#333;stroke-width:.75}
.s{stroke:#fff;stroke-width:.75}
.sample .s{stroke:#333}
.cut{stroke:#111;stroke-width:1.25;stroke-dasharray:4 3}
.axis{stroke:#111;stroke-width:1}
ul.legend{list-style:none;margin:.25rem 0;padding:0;display:flex;flex-wrap:wrap;gap:.1rem 1rem;
 font-size:.85rem}
.legend li{unicode-bidi:isolate}
.wide{overflow-x:auto;margin:.5rem 0}
table{border-collapse:collapse;font-size:.85rem;font-variant-numeric:tabular-nums}
th,td{padding:.2rem .4rem;border-bottom:1px solid #bbb;vertical-align:top;white-space:nowrap}
thead th{border-bottom:2px solid #111;vertical-align:bottom}
th span{display:inline-block;width:max-content;max-width:16rem;white-space:normal;overflow-wrap:break-word;
 unicode-bidi:isolate}
thead .right span{max-width:6rem}
td.left{white-space:normal;min-width:13rem}
tbody th{font-weight:600}
.left{text-align:left}
.right{text-align:right}
@media print{
 body{max-width:none;padding:0;font-size:10pt}
 a{color:inherit;text-decoration:none}
 .wide{overflow:visible}
 table{font-size:7.5pt}
 th,td{padding:.1rem .25rem}
 td.left{min-width:0}
 th span{max-width:11rem}
 .up{display:none}
 h2,.note{break-after:avoid}
 figure,tr{break-inside:avoid}
 figure{max-width:48%}
}
)css";

}  // namespace mcbin

#endif
