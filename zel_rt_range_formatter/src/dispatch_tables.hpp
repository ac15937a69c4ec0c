// Dispatch records of the two formatters, filled during static initialisation.
#pragma once

#include "zel/formatter.h"

namespace zel::toolbox::rt_range {

extern zel_formatter_dispatch_table_t rt_range_formatter_dispatch_table;
extern zel_formatter_dispatch_table_t rt_range_ethernet_formatter_dispatch_table;

} // namespace zel::toolbox::rt_range
