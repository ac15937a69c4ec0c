// MAT files, read back with a library that has its own idea of them, against the CSV tables of the
// same capture.

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <matio.h>
#include <unistd.h>

#include "tests/harness/pcap.hpp"
#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {
namespace {

using mat_file = std::unique_ptr<mat_t, decltype(&Mat_Close)>;
using mat_variable = std::unique_ptr<matvar_t, decltype(&Mat_VarFree)>;

std::vector<std::string> field_names(matvar_t* structure) {
    char* const* const names = Mat_VarGetStructFieldnames(structure);
    return {names, names + Mat_VarGetNumberOfFields(structure)};
}

/// The rows of a char matrix of two bytes per character, without the spaces at their ends.
std::vector<std::u16string> rows_of(const matvar_t* texts) {
    EXPECT_EQ(texts->class_type, MAT_C_CHAR);
    EXPECT_EQ(texts->data_size, 2);
    const auto* const characters = static_cast<const char16_t*>(texts->data);
    std::vector<std::u16string> rows(texts->dims[0]);
    for (std::size_t i = 0; i < texts->dims[0] * texts->dims[1]; ++i)
        rows[i % texts->dims[0]] += characters[i];
    for (std::u16string& row : rows)
        row.resize(row.find_last_not_of(u' ') + 1);
    return rows;
}

template <typename T>
T element(const matvar_t* vector, std::size_t row) {
    EXPECT_EQ(vector->data_size, static_cast<int>(sizeof(T)));
    T value;
    std::memcpy(&value, static_cast<const char*>(vector->data) + row * sizeof(T), sizeof(T));
    return value;
}

std::string integer_text(const matvar_t* vector, std::size_t row) {
    switch (vector->class_type) {
    case MAT_C_UINT8:
        return std::to_string(element<std::uint8_t>(vector, row));
    case MAT_C_UINT16:
        return std::to_string(element<std::uint16_t>(vector, row));
    case MAT_C_UINT32:
        return std::to_string(element<std::uint32_t>(vector, row));
    case MAT_C_UINT64:
        return std::to_string(element<std::uint64_t>(vector, row));
    case MAT_C_INT16:
        return std::to_string(element<std::int16_t>(vector, row));
    case MAT_C_INT32:
        return std::to_string(element<std::int32_t>(vector, row));
    case MAT_C_INT64:
        return std::to_string(element<std::int64_t>(vector, row));
    default:
        return "a class of no integer";
    }
}

/// The number of an address, from its text. 0 for none.
std::uint32_t address_in(const std::string& text) {
    std::uint32_t address = 0;
    for (const std::string& part : split(text, '.'))
        address = address << 8 | static_cast<std::uint32_t>(std::stoi(part));
    return address;
}

bool is_address(const std::string& column) {
    return column.ends_with("_ip") || column.ends_with("_address");
}

class mat_output : public rtrange_program {
protected:
    void open(const std::string& name) {
        file.reset(Mat_Open((folder / name).c_str(), MAT_ACC_RDONLY));
        ASSERT_NE(file, nullptr);
        ASSERT_EQ(Mat_GetVersion(file.get()), MAT_FT_MAT73);
        labels.reset(Mat_VarRead(file.get(), "labels"));
        ASSERT_NE(labels, nullptr);
    }

    std::vector<std::string> variables() const {
        std::size_t count = 0;
        char* const* const names = Mat_GetDir(file.get(), &count);
        return {names, names + count};
    }

    /// Of a column without labels, none.
    std::vector<std::u16string> labels_of(const std::string& column) const {
        const matvar_t* const texts = Mat_VarGetStructFieldByName(labels.get(), column.c_str(), 0);
        return texts != nullptr ? rows_of(texts) : std::vector<std::u16string>{};
    }

    /// Whether an element has the value that a cell of a CSV table shows. The labels are those of
    /// its column, if it has any.
    static bool shows(const matvar_t* vector, std::size_t row, const std::string& column,
                      const std::vector<std::u16string>& labels, const std::string& cell) {
        if (!labels.empty())
            return labels.at(element<std::uint32_t>(vector, row) - 1) ==
                   fs::path(std::u8string(cell.begin(), cell.end())).u16string();
        if (is_address(column))
            return element<std::uint32_t>(vector, row) == address_in(cell);
        if (vector->class_type != MAT_C_DOUBLE)
            return integer_text(vector, row) == cell;
        const auto number = element<double>(vector, row);
        double expected = 0;
        std::from_chars(cell.data(), cell.data() + cell.size(), expected);
        if (cell.empty() || std::isnan(expected))
            return std::isnan(number);
        return std::bit_cast<std::uint64_t>(number) == std::bit_cast<std::uint64_t>(expected);
    }

    /// Compares a struct with a table, cell by cell.
    void expect_equal(const std::string& name, const csv_table& table) const {
        const mat_variable read(Mat_VarRead(file.get(), name.c_str()), &Mat_VarFree);
        ASSERT_NE(read, nullptr) << name;
        ASSERT_EQ(read->class_type, MAT_C_STRUCT) << name;
        EXPECT_EQ(field_names(read.get()), table.header) << name;
        for (const std::string& column : table.header) {
            const matvar_t* const vector =
                Mat_VarGetStructFieldByName(read.get(), column.c_str(), 0);
            ASSERT_EQ(vector->rank, 2) << name << " " << column;
            ASSERT_EQ(vector->dims[0], table.rows.size()) << name << " " << column;
            ASSERT_EQ(vector->dims[1], 1U) << name << " " << column;
            const auto texts = labels_of(column);
            for (std::size_t row = 0; row < table.rows.size(); ++row)
                ASSERT_TRUE(shows(vector, row, column, texts, table.cell(row, column)))
                    << name << " " << column << " " << row << " " << table.cell(row, column);
        }
    }

    mat_file file{nullptr, &Mat_Close};
    mat_variable labels{nullptr, &Mat_VarFree};
};

TEST_F(mat_output, holds_what_the_csv_tables_hold) {
    // Long enough for a target's packets to fill more than one chunk. One frame is refused.
    succeed("simulate run.pcap --duration 22 --targets 1");
    std::string capture = content(folder / "run.pcap");
    capture[capture.find('\xE7', capture.size() - 2000)] = 0; // the first byte of an NCOM packet
    write(folder / "größer.pcap", capture);
    using names = std::vector<std::string>;
    for (const auto& [view, tables] :
         {std::pair{"record", names{"hunter", "hunter_samples", "rcom", "target1"}},
          std::pair{"measured", names{"hunter", "rcom", "refused", "target1", "unidentified"}}}) {
        SCOPED_TRACE(view);
        const std::string decode = std::string("decode größer.pcap --overwrite --view ") + view;
        succeed(decode + " -o csv");
        expect_contains(succeed(decode + " --as mat -o run.mat"), {"run.mat /" + tables[1]});
        ASSERT_NO_FATAL_FAILURE(open("run.mat"));
        names expected = tables;
        expected.emplace_back("labels");
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(variables(), expected);
        for (const std::string& table : tables)
            expect_equal(table, csv_table(folder / "csv" / (table + ".csv")));
    }
    EXPECT_GT(csv_table(folder / "csv/target1.csv").rows.size(), 4096U);
    EXPECT_EQ(labels_of("capture"), std::vector<std::u16string>{u"größer.pcap"});
}

TEST_F(mat_output, numbers_the_packets_alike_in_every_file) {
    // The first packet is another one than in the whole capture, and not all kinds are there.
    succeed("decode following.pcap --as mat -o run.mat --units target1 --from 0.5 --to 0.51");
    ASSERT_NO_FATAL_FAILURE(open("run.mat"));
    EXPECT_EQ(labels_of("packet"),
              (std::vector<std::u16string>{u"ncom", u"wrapped_ncom", u"range", u"lane"}));
}

TEST_F(mat_output, begins_with_a_header_and_is_the_same_every_time) {
    for (const std::string kind : {"mat", "hdf5"}) {
        const std::string decode = "decode following.pcap --overwrite -o result --as " + kind;
        succeed(decode);
        const std::string first = content(folder / "result");
        usleep(1'100'000); // the resolution of times in a file is one second
        succeed(decode);
        EXPECT_TRUE(content(folder / "result") == first) << kind;
        if (kind == "mat") {
            const std::string text = "MATLAB 7.3 MAT-file, Platform: rtrange, Created on: "
                                     "Mon Jan  5 10:00:00 2026 HDF5 schema 1.00 .";
            EXPECT_EQ(first.substr(0, 116), text + std::string(116 - text.size(), ' '));
            EXPECT_EQ(first.substr(116, 12), std::string("\0\0\0\0\0\0\0\0\0\2IM", 12));
            EXPECT_EQ(first.substr(512, 8), "\x89HDF\r\n\x1A\n");
        }
        fs::remove(folder / "result");
    }
}

} // namespace
} // namespace rtrange_test
