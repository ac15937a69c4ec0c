#include "tools/rtrange/outputs/csv_output.hpp"

#include <cstddef>
#include <vector>

#include <fmt/format.h>

namespace rtrange {

csv_output::csv_output(const std::filesystem::path& folder, result_rules rules,
                       const selection& selected)
    : result_(folder, file_names(), rules), selected_(selected) {}

void csv_output::write(const record_row& row) {
    csv_file& file = files_[row.table] != nullptr ? *files_[row.table] : open(row.table);
    file.cell(row.reference_timestamp);
    if (!row.source.empty())
        file.cell(row.source);
    file.end_row(row.record);
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
    for (std::size_t table = 0; table < record_table_count; ++table)
        if (files_[table] != nullptr)
            result.push_back({result_.target_of(name_of(table)).string(), files_[table]->rows()});
    return result;
}

std::string csv_output::name_of(std::size_t table) {
    return fmt::format("{}.csv", record_tables()[table].name);
}

std::vector<std::string> csv_output::file_names() {
    std::vector<std::string> names;
    for (std::size_t table = 0; table < record_table_count; ++table)
        names.push_back(name_of(table));
    return names;
}

csv_file& csv_output::open(std::size_t table) {
    std::vector<std::string_view> leading_columns{"reference_timestamp"};
    if (record_tables()[table].has_source)
        leading_columns.emplace_back("source");
    files_[table] =
        std::make_unique<csv_file>(result_.path_of(name_of(table)), leading_columns,
                                   selected_.fields(table), record_size(table), writer_);
    return *files_[table];
}

} // namespace rtrange
