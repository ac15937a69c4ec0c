#include "tests/harness/same_tables.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <hdf5.h>

#include "tests/harness/files.hpp"
#include "zel_rt_range_formatter/records/ncom_fields.hpp"
#include "zel_rt_range_formatter/records/rcom_fields.hpp"

namespace rtrange_test {
namespace {

/// Two builds may differ in the last bit of a sine or cosine. A product of it with a distance or a
/// speed then differs by 2e-16 of that, and a sum of a few such products, of which none exceeds
/// some kilometres or metres per second, by less than this.
bool same_number(double a, double b) {
    constexpr double relative = 4e-15;
    constexpr double absolute = 4e-12;
    return (std::isnan(a) && std::isnan(b)) || a == b ||
           std::abs(a - b) <= absolute + relative * std::max(std::abs(a), std::abs(b));
}

/// The columns of a table that the decoder computes in floating point.
std::set<std::string> number_columns(const std::string& table) {
    using namespace zel::toolbox::rt_range;
    std::set<std::string> names;
    for (const field& field : table == "rcom.csv" ? rcom_fields() : ncom_fields())
        if (field.type == field_type::f64)
            names.insert(field.name);
    return names;
}

using row = std::vector<std::string>;

std::vector<row> rows_of(const fs::path& table) {
    std::vector<row> rows;
    for (const std::string& line : split(content(table), '\n'))
        rows.push_back(split(line, ','));
    return rows;
}

/// The elements of a dataset, as they lie in the file.
std::string elements(const fs::path& file, const std::string& name) {
    const hid_t id = H5Fopen(file.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
    const hid_t dataset = H5Dopen2(id, name.c_str(), H5P_DEFAULT);
    const hid_t type = H5Dget_type(dataset);
    const hid_t space = H5Dget_space(dataset);
    std::string bytes(
        H5Tget_size(type) * static_cast<std::size_t>(H5Sget_simple_extent_npoints(space)), '\0');
    EXPECT_GE(H5Dread(dataset, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, bytes.data()), 0) << name;
    H5Sclose(space);
    H5Tclose(type);
    H5Dclose(dataset);
    H5Fclose(id);
    return bytes;
}

bool same_numbers(const std::string& a, const std::string& b) {
    bool same = a.size() == b.size();
    for (std::size_t at = 0; same && at < a.size(); at += sizeof(double)) {
        double numbers[2];
        std::memcpy(&numbers[0], a.data() + at, sizeof(double));
        std::memcpy(&numbers[1], b.data() + at, sizeof(double));
        same = same_number(numbers[0], numbers[1]);
    }
    return same;
}

} // namespace

void expect_same_tables(const fs::path& folder, const fs::path& expected_folder) {
    ASSERT_EQ(names_in(folder), names_in(expected_folder));
    ASSERT_FALSE(names_in(folder).empty());
    for (const std::string& name : names_in(folder)) {
        const auto numbers = number_columns(name);
        const auto rows = rows_of(folder / name);
        const auto expected = rows_of(expected_folder / name);
        ASSERT_EQ(rows.size(), expected.size()) << name;
        ASSERT_EQ(rows[0], expected[0]) << name;
        for (std::size_t i = 1; i < rows.size(); ++i) {
            ASSERT_EQ(rows[i].size(), rows[0].size());
            ASSERT_EQ(expected[i].size(), rows[0].size());
            for (std::size_t column = 0; column < rows[i].size(); ++column)
                EXPECT_TRUE(
                    numbers.contains(rows[0][column])
                        ? same_number(std::stod(rows[i][column]), std::stod(expected[i][column]))
                        : rows[i][column] == expected[i][column])
                    << name << " row " << i << ", " << rows[0][column] << ": " << rows[i][column]
                    << " instead of " << expected[i][column];
        }
    }
}

void expect_same_datasets(const fs::path& file, const fs::path& expected_file,
                          const fs::path& tables) {
    for (const std::string& table : names_in(tables)) {
        const auto numbers = number_columns(table);
        const auto rows = rows_of(tables / table);
        for (const std::string& column : rows.at(0)) {
            const std::string name = fs::path(table).stem().string() + "/" + column;
            const std::string actual = elements(file, name);
            const std::string expected = elements(expected_file, name);
            EXPECT_GE(expected.size(), rows.size() - 1) << name;
            EXPECT_TRUE(numbers.contains(column) ? same_numbers(actual, expected)
                                                 : actual == expected)
                << name;
        }
    }
}

} // namespace rtrange_test
