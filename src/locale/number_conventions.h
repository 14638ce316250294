/*
 * The six NumberConventions records of the property table, derived from the monetary (155 to
 * 169) and numeric (172 to 182) properties and hung on their key properties (NumIndex): local
 * and international currency, the locale's numbers, fixed numbers ("." and ","), the locale's
 * percentages, fixed percentages.
 *
 *   build_number_conventions(*call.property_cache);
 *   const NumberConventions& money = *cache.properties[prop::local_currency_key].conventions;
 */
#pragma once

#include "locale/property_table.h"

namespace vxlocfmt::locale {

void build_number_conventions(PropertyCache& cache);

}  // namespace vxlocfmt::locale
