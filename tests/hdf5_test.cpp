// HDF5 files, read back with the library that everybody reads them with, against the CSV tables of
// the same capture.

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <hdf5.h>

#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {
namespace {

/// The elements of a dataset, as bytes.
struct dataset {
    dataset(hid_t group, const std::string& name)
        : id(H5Dopen2(group, name.c_str(), H5P_DEFAULT)), type(H5Dget_type(id)),
          space(H5Dget_space(id)), size(H5Tget_size(type)),
          count(static_cast<std::size_t>(H5Sget_simple_extent_npoints(space))),
          bytes(count * size) {
        EXPECT_GE(H5Dread(id, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, bytes.data()), 0) << name;
    }
    ~dataset() {
        H5Sclose(space);
        H5Tclose(type);
        H5Dclose(id);
    }
    dataset(const dataset&) = delete;
    dataset& operator=(const dataset&) = delete;

    /// Whether an element has the value that a cell of a CSV table shows.
    bool shows(std::size_t index, const std::string& cell) const {
        const char* const element = bytes.data() + index * size;
        if (H5Tget_class(type) == H5T_FLOAT && cell.empty()) {
            double number = 0;
            std::memcpy(&number, element, sizeof(number));
            return std::isnan(number);
        }
        if (H5Tget_class(type) == H5T_STRING)
            return cell == std::string(element, strnlen(element, size));
        if (H5Tget_class(type) == H5T_FLOAT) {
            double number = 0;
            std::memcpy(&number, element, sizeof(number));
            double expected = 0;
            std::from_chars(cell.data(), cell.data() + cell.size(), expected);
            return std::isnan(expected) ? std::isnan(number)
                                        : std::memcmp(&number, &expected, sizeof(number)) == 0;
        }
        std::array<char, sizeof(std::int64_t)> number{};
        std::memcpy(number.data(), element, size);
        H5Tconvert(type, H5T_NATIVE_INT64, 1, number.data(), nullptr, H5P_DEFAULT);
        return cell == std::to_string(std::bit_cast<std::int64_t>(number));
    }

    std::string attribute(const char* name) const {
        const hid_t attribute = H5Aopen(id, name, H5P_DEFAULT);
        const hid_t text = H5Aget_type(attribute);
        char* characters = nullptr;
        H5Aread(attribute, text, &characters);
        std::string value(characters);
        H5free_memory(characters);
        H5Tclose(text);
        H5Aclose(attribute);
        return value;
    }

    hid_t id, type, space;
    std::size_t size, count;
    std::vector<char> bytes;
};

class hdf5_file : public rtrange_program {
protected:
    void open(const std::string& name) {
        file = H5Fopen((folder / name).c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
        ASSERT_GE(file, 0);
    }
    void TearDown() override {
        if (file >= 0)
            H5Fclose(file);
        rtrange_program::TearDown();
    }

    static std::vector<std::string> names_in(hid_t group) {
        H5G_info_t info;
        H5Gget_info(group, &info);
        std::vector<std::string> names;
        for (hsize_t i = 0; i < info.nlinks; ++i) {
            std::array<char, 256> name;
            H5Lget_name_by_idx(group, ".", H5_INDEX_NAME, H5_ITER_INC, i, name.data(), name.size(),
                               H5P_DEFAULT);
            names.emplace_back(name.data());
        }
        return names;
    }

    /// Compares a group with a table, cell by cell.
    void expect_equal(const std::string& group_name, const csv_table& table) const {
        const hid_t group = H5Gopen2(file, group_name.c_str(), H5P_DEFAULT);
        auto columns = table.header;
        std::sort(columns.begin(), columns.end());
        EXPECT_EQ(names_in(group), columns) << group_name;
        for (const std::string& column : columns) {
            const dataset data(group, column);
            ASSERT_EQ(data.count, table.rows.size()) << group_name << " " << column;
            // Otherwise, h5diff takes the dataset for an empty one.
            EXPECT_GT(H5Dget_storage_size(data.id), 0U) << group_name << " " << column;
            for (std::size_t row = 0; row < data.count; ++row)
                ASSERT_TRUE(data.shows(row, table.cell(row, column)))
                    << group_name << " " << column << " " << row << " " << table.cell(row, column);
        }
        H5Gclose(group);
    }

    hid_t file = H5I_INVALID_HID;
};

TEST_F(hdf5_file, holds_what_the_csv_tables_hold) {
    // Long enough for a target's packets to fill more than one chunk.
    succeed("simulate run.pcap --duration 22 --targets 1");
    using names = std::vector<std::string>;
    for (const auto& [view, expected] :
         {std::pair{"record", names{"hunter", "hunter_samples", "rcom", "target1"}},
          std::pair{"measured", names{"hunter", "rcom", "target1", "unidentified"}}}) {
        SCOPED_TRACE(view);
        const std::string decode = std::string("decode run.pcap --overwrite --view ") + view;
        succeed(decode + " -o csv");
        expect_contains(succeed(decode + " --as hdf5 -o run.h5"), {"run.h5 /" + expected[1]});
        ASSERT_NO_FATAL_FAILURE(open("run.h5"));
        EXPECT_EQ(names_in(file), expected);
        for (const std::string& group : expected)
            expect_equal(group, csv_table(folder / "csv" / (group + ".csv")));
        H5Fclose(std::exchange(file, H5I_INVALID_HID));
    }
    EXPECT_GT(csv_table(folder / "csv/target1.csv").rows.size(), 4096U);
}

TEST_F(hdf5_file, describes_its_compressed_and_extendible_datasets) {
    succeed("decode following.pcap --as hdf5 -o run.h5");
    ASSERT_NO_FATAL_FAILURE(open("run.h5"));
    const dataset heading(file, "/hunter/heading");
    EXPECT_EQ(heading.attribute("unit"), "deg");
    EXPECT_FALSE(heading.attribute("description").empty());
    EXPECT_EQ(dataset(file, "/rcom/reference_timestamp").attribute("unit"), "ns");
    hsize_t limit = 0;
    H5Sget_simple_extent_dims(heading.space, nullptr, &limit);
    EXPECT_EQ(limit, H5S_UNLIMITED);
    const hid_t creation = H5Dget_create_plist(heading.id);
    EXPECT_EQ(H5Pget_layout(creation), H5D_CHUNKED);
    unsigned flags = 0;
    EXPECT_GE(H5Pget_filter_by_id2(creation, H5Z_FILTER_DEFLATE, &flags, nullptr, nullptr, 0,
                                   nullptr, nullptr),
              0);
    H5Pclose(creation);
}

TEST_F(hdf5_file, holds_the_selection_alone) {
    const std::string decode =
        "decode following.pcap --units target2 --fields roll,heading --from 0.5 --to 0.6";
    succeed(decode + " -o csv");
    succeed(decode + " --as hdf5 -o run.h5");
    ASSERT_NO_FATAL_FAILURE(open("run.h5"));
    EXPECT_EQ(names_in(file), std::vector<std::string>{"target2"});
    const csv_table table(folder / "csv/target2.csv");
    EXPECT_EQ(table.header, (std::vector<std::string>{"reference_timestamp", "time_s", "packet",
                                                      "roll", "heading"}));
    expect_equal("target2", table);
}

} // namespace
} // namespace rtrange_test
