#include "layer_table.h"

#include "print.h"

namespace host {

void PrintLayers(std::ostream& out, const Drawing& drawing) {
    Print(out, "%9s  %-8s %-7s %s\n", "entities", "colour", "shown", "layer");
    for (const auto& [name, layer] : drawing.layers)
        Print(out, "%9d  %-8s %-7s %s\n", layer.entities, layer.colour.empty() ? "-" : layer.colour.c_str(),
              layer.isFrozen  ? "frozen"
              : layer.isShown ? "yes"
                              : "off",
              OneLine(name).c_str());
}

} // namespace host
