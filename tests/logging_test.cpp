// Log records as the host receives them.

#include "extensibility/module_name.hpp"
#include "tests/harness/expectations.hpp"

namespace harness {
namespace {

/// Has the host describe the raw package's state with this text, which the plug-in logs.
std::vector<log_record> log_of_description(instance& subject, const std::string& description) {
    recording_zelc_t& zelc = *recording_zelc();
    zelc.state_record = true;
    zelc.state_code = 7;
    zelc.state_description = description.c_str();
    const auto logs = subject.transform({}).logs;
    zelc.state_record = false;
    return logs;
}

TEST(logging, a_record_names_its_origin) {
    instance subject;
    const auto logs = log_of_description(subject, "worn out");
    ASSERT_EQ(logs.size(), 2U);
    EXPECT_EQ(logs[0].message, "worn out");
    EXPECT_EQ(logs[1].message, "Package state error.");
    for (const log_record& record : logs) {
        EXPECT_EQ(record.level, 300U);
        EXPECT_EQ(record.module, plugin_file_name());
        EXPECT_EQ(record.file, "rt_range_formatter.cpp");
        EXPECT_EQ(record.function, "zel::toolbox::rt_range::rt_range_formatter::format");
        EXPECT_GT(record.line, 0U);
        EXPECT_EQ(record.reserved, 0U);
    }
    EXPECT_LT(logs[0].line, logs[1].line);
}

TEST(logging, a_source_file_is_named_without_its_folder) {
    using zel::extensibility::log::last_path_component;
    EXPECT_STREQ(last_path_component("/src/formatter.cpp"), "formatter.cpp");
    EXPECT_STREQ(last_path_component("C:\\src\\formatter.cpp"), "formatter.cpp");
    EXPECT_STREQ(last_path_component("C:\\src/a\\b/formatter.cpp"), "formatter.cpp");
    EXPECT_STREQ(last_path_component("formatter.cpp"), "formatter.cpp");
    EXPECT_STREQ(last_path_component("src/"), "");
}

TEST(logging, a_message_is_the_hosts_format_cut_after_1023_characters) {
    instance subject;
    EXPECT_EQ(log_of_description(subject, "100 %% worn").at(0).message, "100 % worn");
    for (const std::size_t size : {1U, 1022U, 1023U, 1024U, 1025U, 5000U}) {
        const std::string text(size, 'x');
        EXPECT_EQ(log_of_description(subject, text).at(0).message, text.substr(0, 1023));
    }
}

TEST(logging, a_host_without_a_log_changes_nothing_else) {
    host_services services;
    services.offers_log = false;
    instance subject;
    void* const logging = subject.handle;
    ASSERT_EQ(recorder_formatter().create(&subject.handle, &services.locator, nullptr), 0U);
    EXPECT_TRUE(subject.transform(recorder_package(bytes(10))).packages.empty());
    EXPECT_EQ(subject.decode(ncom_frame(ncom_packet{})).packages.size(), 2U);
    EXPECT_TRUE(services.logs.empty());
    EXPECT_EQ(recorder_formatter().destroy(subject.handle), 0U);
    subject.handle = logging;
}

} // namespace
} // namespace harness
