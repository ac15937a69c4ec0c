// rtrange fields: the tables of the decoded records.
#pragma once

namespace rtrange {

/// Prints each field's name, offset, type, unit and meaning.
void print_fields();

} // namespace rtrange
