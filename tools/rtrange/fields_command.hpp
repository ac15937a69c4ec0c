// rtrange fields: lists the columns of the tables and the fields of the decoded records.
#pragma once

namespace rtrange {

/// Prints each column of the view "measured" on one line: its name, unit, tables, what brings it,
/// and its meaning.
void print_measured_columns();

/// Prints each field of the records on one line, with its offset and type.
void print_record_fields();

/// Prints both as Markdown: the page docs/records.md.
void print_fields_as_markdown();

/// Prints the records as the C header include/zel/rt_range_records.h.
void print_fields_as_c();

} // namespace rtrange
