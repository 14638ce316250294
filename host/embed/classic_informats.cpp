// The classic value informats offered by short name.
#include <algorithm>
#include <iterator>

#include "classic_routines.h"

namespace vxhost {
namespace {

constexpr ClassicInformat table[] = {
    {"N", "vxfmtzifmn", Yields::number},
    {"COMMAX", "vxfmtzifmcmx", Yields::number},
    {"NUMX", "vxfmtzifmnmx", Yields::number},
    {"DOLLAR", "vxfmtzifmdlr", Yields::number},
    {"DOLLARX", "vxfmtzifmdlx", Yields::number},
    {"EURO", "vxfmtzifmeur", Yields::number},
    {"EUROX", "vxfmtzifmerx", Yields::number},
    {"PERCENT", "vxfmtzifmpct", Yields::number},
    {"NEGPAREN", "vxfmtzifmnpn", Yields::number},
    {"NEGPARENX", "vxfmtzifmnpr", Yields::number},
    {"SIZEK", "vxfmtzifmskg", Yields::number},
    {"HEX", "vxfmtzifmhex", Yields::number},
    {"BINARY", "vxfmtzifmbin", Yields::number},
    {"UUID", "vxfmtzifmuuid", Yields::bytes},
    {"HEXCHAR", "vxfmtzifmhxc", Yields::bytes},
    {"BINCHAR", "vxfmtzifmbnc", Yields::bytes},
    {"BASE", "vxfmtzifmb64", Yields::bytes},
    {"CHAR", "vxfmtzifmc", Yields::characters},
    {"UPCASE", "vxfmtzifmupc", Yields::characters},
    {"QUOTE", "vxfmtzifmquo", Yields::characters},
    {"OCC", "vxfmtzifmocc", Yields::characters},
};

}  // namespace

std::span<const ClassicInformat> classic_informats() { return table; }

const ClassicInformat* find_classic_informat(std::string_view name) {
    const auto* found = std::find_if(std::begin(table), std::end(table),
                                     [&](const ClassicInformat& c) { return name == c.name; });
    return found == std::end(table) ? nullptr : found;
}

}  // namespace vxhost
