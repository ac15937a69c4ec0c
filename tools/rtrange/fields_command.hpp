// rtrange fields: the tables of the decoded records.
#pragma once

namespace rtrange {

/// Prints each field's name, offset, type, unit and meaning.
void print_fields();

/// The same as the page docs/records.md.
void print_fields_as_markdown();

/// The same as the C header include/zel/rt_range_records.h.
void print_fields_as_c();

} // namespace rtrange
