#include "tools/rtrange/outputs/csv_output.hpp"

#include <cstddef>
#include <vector>

#include <fmt/format.h>

namespace rtrange {

csv_output::csv_output(const std::filesystem::path& folder, result_rules rules,
                       const table_columns& columns)
    : result_(folder, file_names(), rules), columns_(columns) {}

void csv_output::write(const table_row& row) {
    csv_file& file = files_[row.table] != nullptr ? *files_[row.table] : open(row.table);
    file.write(row.cells);
}

void csv_output::close() {
    for (const auto& file : files_)
        if (file != nullptr)
            file->flush();
    writer_.finish();
    for (const auto& file : files_)
        if (file != nullptr)
            file->close();
    result_.complete();
}

std::vector<written_table> csv_output::tables() const {
    std::vector<written_table> result;
    for (std::size_t table = 0; table < table_count; ++table)
        if (files_[table] != nullptr)
            result.push_back({result_.target_of(name_of(table)).string(), files_[table]->rows(),
                              std::string(table_descriptions()[table].name)});
    return result;
}

std::string csv_output::name_of(std::size_t table) {
    return fmt::format("{}.csv", table_descriptions()[table].name);
}

std::vector<std::string> csv_output::file_names() {
    std::vector<std::string> names;
    for (std::size_t table = 0; table < table_count; ++table)
        names.push_back(name_of(table));
    return names;
}

csv_file& csv_output::open(std::size_t table) {
    files_[table] =
        std::make_unique<csv_file>(result_.path_of(name_of(table)), columns_[table], writer_);
    return *files_[table];
}

} // namespace rtrange
