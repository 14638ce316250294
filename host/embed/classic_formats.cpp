// The classic formats the CLI offers by name: the clocks and the numeric renderers.
#include "classic_routines.h"

namespace vxhost {
namespace {

constexpr std::uint32_t F = vxlocfmt::row_kind_format;

constexpr ClassicRoutine formats[] = {
    {"TIME", F, "vxfmtzfmtime", 2, 40, 8, 39, 0},
    {"TIMEAMPM", F, "vxfmtzfmtimm", 2, 40, 11, 39, 0},
    {"TOD", F, "vxfmtzfmtod", 2, 40, 8, 39, 0},
    {"N", F, "vxfmtzfmn", 1, 32, 12, 31, 0},
    {"COMMA", F, "vxfmtzfmcomma", 1, 32, 6, 31, 0},
    {"DOLLAR", F, "vxfmtzfmdollar", 2, 32, 6, 31, 0},
    {"PERCENT", F, "vxfmtzfmpercent", 4, 32, 6, 31, 0},
    {"PERCENTN", F, "vxfmtzfmpercentn", 4, 32, 6, 31, 0},
    {"BEST", F, "vxfmtzfmbest", 1, 40, 12, 0, 0},
    {"BESTDT", F, "vxfmtzfmbestdt", 1, 40, 12, 0, 0},
    {"T", F, "vxfmtzfmt", 1, 32, 12, 31, 0},
    {"E", F, "vxfmtzfme", 7, 32, 12, 0, 0},
    {"D", F, "vxfmtzfmd", 1, 32, 12, 31, 0},
};

}  // namespace

const std::span<const ClassicRoutine> classic_format_table{formats};

}  // namespace vxhost
