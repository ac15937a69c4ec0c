// Output as an HDF5 file.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "tools/rtrange/outputs/hdf5_handle.hpp"
#include "tools/rtrange/outputs/hdf5_table.hpp"
#include "tools/rtrange/outputs/table_output.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// Writes one file with a group per table: /hunter, /hunter_samples, ..., /rcom.
class hdf5_output final : public table_output {
public:
    /// The file is created with the first row. The columns must outlive the output.
    hdf5_output(const std::filesystem::path& file, const table_columns& columns);

    void write(const table_row& row) override;
    void close() override;
    std::vector<written_table> tables() const override;

private:
    hdf5_table& open(std::size_t table);
    [[noreturn]] void fail(const hdf5_error& error) const;

    std::filesystem::path path_;
    const table_columns& columns_;
    std::optional<hdf5_handle> file_;
    std::array<std::unique_ptr<hdf5_table>, table_count> tables_;
};

} // namespace rtrange
