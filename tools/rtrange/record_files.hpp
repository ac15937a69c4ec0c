// The output files of a decoded run.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <vector>

#include "host/loader/packages.hpp"
#include "tools/rtrange/csv_file.hpp"

namespace rtrange {

/// Sorts packages into tables: one per unit (hunter, target1 to target4), each with a table of the
/// sample batches that the unit completed, and one for RCOM. A table that gets no row is not
/// created.
class record_files {
public:
    /// Creates the folder. Throws failure when that is not possible.
    explicit record_files(const std::filesystem::path& folder);

    /// Writes what one raw package was decoded into, in the plug-in's order. Gives the number of
    /// decoded packages among them. Throws failure when a file cannot be written.
    std::size_t write(const zel::host::package_array& packages);

    /// Completes all tables and removes those that an earlier run left and this one has no rows
    /// for. Throws failure when that is not possible.
    void close();

    /// The tables with rows, in a fixed order.
    std::vector<const csv_file*> tables() const;

private:
    static constexpr std::size_t table_count = 11;

    csv_file& table(std::size_t index);
    void write_rcom(std::uint64_t timestamp, std::span<const std::uint8_t> record);
    void write_unit(std::size_t index, std::uint64_t timestamp, bool from_rcom,
                    std::span<const std::uint8_t> record);

    std::filesystem::path folder_;
    std::array<std::unique_ptr<csv_file>, table_count> tables_;
};

} // namespace rtrange
