// rtrange fields: lists the fields of the decoded records.
#pragma once

namespace rtrange {

/// Prints the name, offset, type, unit and meaning of each field.
void print_fields();

/// Prints the same as Markdown: the page docs/records.md.
void print_fields_as_markdown();

} // namespace rtrange
