#include "tools/wave/svg_style.h"

const char* const kSvgStyle = R"(<style>
text { font: 12px ui-monospace, "DejaVu Sans Mono", Menlo, Consolas, monospace; fill: #1c2733; }
.title { font: 600 15px system-ui, "DejaVu Sans", sans-serif; }
.caption { font: 13px system-ui, "DejaVu Sans", sans-serif; fill: #55626f; }
.tick { font-size: 11px; fill: #55626f; }
.value { text-anchor: middle; }
.page { fill: #ffffff; }
.grid { stroke: #e3e8ee; fill: none; }
.axis { stroke: #8a96a3; fill: none; }
.level { stroke: #1d5fa8; stroke-width: 1.5; stroke-linejoin: round; fill: none; }
.bus { stroke: #1d5fa8; stroke-width: 1.5; stroke-linejoin: round; fill: none; }
.inside { fill: #edf4fc; }
.released { stroke: #b3610a; stroke-width: 1.5; stroke-dasharray: 5 3; fill: none; }
.undriven { stroke: #8a96a3; stroke-width: 1.5; stroke-dasharray: 1.5 4; fill: none; }
.crowded { fill: #1d5fa8; fill-opacity: 0.55; }
@media (prefers-color-scheme: dark) {
text { fill: #e4eaf1; }
.caption, .tick { fill: #a2afbc; }
.page { fill: #14191f; }
.grid { stroke: #28313b; }
.axis { stroke: #72808e; }
.level { stroke: #79b8ff; }
.bus { stroke: #79b8ff; }
.inside { fill: #1b2938; }
.released { stroke: #f2ae5a; }
.undriven { stroke: #72808e; }
.crowded { fill: #79b8ff; }
}
</style>
)";
