#include "catalog.h"

#include <algorithm>

#include "dateread/template_table.h"
#include "embed/classic_routines.h"
#include "embed/request.h"

namespace vxhost {
namespace {

std::vector<std::string> registry_names(const Library& library, std::uint32_t kind) {
    std::vector<std::string> names;
    for (const vxlocfmt::FuncInfo* row = library.registry(); row->function; ++row)
        if (row->kind == kind) names.push_back(row_name(*row));
    return names;
}

}  // namespace

std::vector<std::string> format_names(const Library& library) {
    std::vector<std::string> names = registry_names(library, vxlocfmt::row_kind_format);
    for (const ClassicRoutine& routine : classic_format_table)
        if (library.symbol(routine.symbol)) names.emplace_back(routine.name);
    return names;
}

std::vector<std::string> informat_names(const Library& library) {
    std::vector<std::string> names = registry_names(library, vxlocfmt::row_kind_informat);
    for (const ClassicInformat& classic : classic_informats())
        if (classic.yields == Yields::number && library.symbol(classic.symbol)) names.emplace_back(classic.name);
    for (std::size_t r = 0; r < vxlocfmt::dateread::dummy_row; ++r) {
        std::string name;
        for (const vxlocfmt::wchar* c = vxfmt_templates[r].name; *c; ++c) name += static_cast<char>(*c);
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    }
    return names;
}

}  // namespace vxhost
