// rtrange fields: lists the fields of the decoded records.
#pragma once

namespace rtrange {

/// Prints the name, offset, type, unit and meaning of each field.
void print_fields();

/// Prints the same as Markdown: the page docs/records.md.
void print_fields_as_markdown();

/// The same as the C header include/zel/rt_range_records.h.
void print_fields_as_c();

} // namespace rtrange
