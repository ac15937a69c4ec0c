// Texts as numbers.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <hdf5.h>

#include "tools/rtrange/tables/column.hpp"

namespace rtrange {

/// Numbers the texts of a MAT file, in which a column holds numbers only: the struct "labels" has
/// the texts of each column, of which a cell holds the row.
class mat_labels {
public:
    /// The texts of all columns of one name.
    class numbering {
    public:
        /// The number of a text, from 1.
        std::uint32_t number_of(const char* text);

        const std::vector<std::string>& texts() const { return texts_; }

    private:
        std::vector<std::string> texts_;
        std::map<std::string, std::uint32_t, std::less<>> numbers_;
    };

    /// That of a column of texts. Its known texts come first, so that they have the same
    /// numbers in all files. Valid as long as the labels.
    numbering& numbering_of(const column& entry);

    /// Writes the struct. Throws hdf5_error when that is not possible.
    void write(hid_t file) const;

private:
    std::map<std::string, numbering> columns_;
};

} // namespace rtrange
