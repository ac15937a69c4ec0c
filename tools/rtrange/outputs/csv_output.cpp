#include "tools/rtrange/outputs/csv_output.hpp"

#include <cstddef>
#include <system_error>
#include <vector>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"

namespace rtrange {

csv_output::csv_output(const std::filesystem::path& folder, const table_columns& columns)
    : folder_(folder), columns_(columns) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw failure(
            fmt::format("cannot create the folder '{}': {}", folder.string(), error.message()));
}

void csv_output::write(const table_row& row) {
    csv_file& file = files_[row.table] != nullptr ? *files_[row.table] : open(row.table);
    file.write(row.cells);
}

void csv_output::close() {
    for (const auto& file : files_)
        if (file != nullptr)
            file->flush();
    writer_.finish();
    if (tables().empty())
        return;
    for (std::size_t table = 0; table < table_count; ++table) {
        if (files_[table] != nullptr) {
            files_[table]->close();
            continue;
        }
        std::error_code error;
        std::filesystem::remove(file_of(folder_, table), error);
        if (error)
            throw failure(fmt::format("cannot remove '{}' of an earlier run: {}",
                                      file_of(folder_, table).string(), error.message()));
    }
}

std::vector<written_table> csv_output::tables() const {
    std::vector<written_table> result;
    for (const auto& file : files_)
        if (file != nullptr)
            result.push_back({file->path().string(), file->rows()});
    return result;
}

std::filesystem::path csv_output::file_of(const std::filesystem::path& folder, std::size_t table) {
    return folder / fmt::format("{}.csv", table_descriptions()[table].name);
}

csv_file& csv_output::open(std::size_t table) {
    files_[table] = std::make_unique<csv_file>(file_of(folder_, table), columns_[table], writer_);
    return *files_[table];
}

} // namespace rtrange
