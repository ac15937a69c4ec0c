// Tables of one run, decoded by two builds of the program.
#pragma once

#include <filesystem>

namespace rtrange_test {

/// Expects two folders to hold the same CSV tables, but for the last bits of computed numbers.
void expect_same_tables(const std::filesystem::path& folder,
                        const std::filesystem::path& expected_folder);

/// Expects two HDF5 files to have the same content for every column of these CSV tables.
void expect_same_datasets(const std::filesystem::path& file,
                          const std::filesystem::path& expected_file,
                          const std::filesystem::path& tables);

} // namespace rtrange_test
