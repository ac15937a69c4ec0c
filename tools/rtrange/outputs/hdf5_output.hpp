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
#include "tools/rtrange/results/result_file.hpp"
#include "tools/rtrange/tables/table.hpp"

namespace rtrange {

/// Writes one file with a group per table: /hunter, /hunter_samples, ..., /rcom.
class hdf5_output final : public table_output {
public:
    /// Throws failure when the file cannot be written or may not be replaced. It appears with
    /// close(). The columns must outlive the output.
    hdf5_output(const std::filesystem::path& file, result_rules rules,
                const table_columns& columns);

    void write(const table_row& row) override;
    void close() override;
    std::vector<written_table> tables() const override;

private:
    hdf5_table& open(std::size_t table);
    [[noreturn]] void fail(const hdf5_error& error) const;

    result_file result_; // declared first: it must be destroyed after the file is closed
    const table_columns& columns_;
    std::optional<hdf5_handle> file_;
    std::array<std::unique_ptr<hdf5_table>, table_count> tables_;
};

} // namespace rtrange
