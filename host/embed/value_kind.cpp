#include "value_kind.h"

#include "embed/template_names.h"

namespace vxhost {
namespace {

bool starts(std::string_view name, std::string_view prefix) { return name.substr(0, prefix.size()) == prefix; }

}  // namespace

ValueKind format_value_kind(std::string_view name) {
    if (starts(name, "@")) name.remove_prefix(1);
    if (starts(name, "NLDATE") || starts(name, "WEEK") || starts(name, "YYWEEK")) return ValueKind::date;
    if (starts(name, "NLDATM") || name == "DTWEEKV") return ValueKind::datetime;
    if (starts(name, "NLTIM") || name == "TIME" || name == "TIMEAMPM" || name == "TOD") return ValueKind::time;
    return ValueKind::number;
}

ValueKind informat_value_kind(std::string_view name) {
    if (starts(name, "@")) name.remove_prefix(1);
    switch (template_kind(name)) {
        case 'D': return ValueKind::date;
        case 'T': return ValueKind::time;
        case 'M': return ValueKind::datetime;
        default: return format_value_kind(name);
    }
}

const char* value_kind_name(ValueKind kind) {
    switch (kind) {
        case ValueKind::date: return "date";
        case ValueKind::datetime: return "datetime";
        case ValueKind::time: return "time";
        case ValueKind::number: break;
    }
    return "number";
}

}  // namespace vxhost
