// Creating instances, finding their services, and what they ask of the host.

#include <tuple>

#include <gtest/gtest.h>

#include "extensibility/service_locator.hpp"
#include "tests/harness/plugin_under_test.hpp"

namespace harness {
namespace {

constexpr const char* transformation = "zel_formatter_raw_package_transformation_support_t";
constexpr const char* binding = "zel_formatter_data_source_binding_t";
constexpr std::uint32_t invalid_argument = 0xA0030016;
constexpr std::uint32_t failed = 0xA0000FA5;

bool can_resolve(const instance& instance, const char* name) {
    bool result = false;
    EXPECT_EQ(instance.locator->can_resolve(instance.locator->handle, name, &result, nullptr), 0U);
    return result;
}

TEST(services, each_formatter_offers_its_own_by_exact_name) {
    instance recorder(recorder_formatter());
    instance ethernet(ethernet_formatter());
    EXPECT_TRUE(can_resolve(recorder, transformation));
    EXPECT_TRUE(can_resolve(recorder, binding));
    EXPECT_TRUE(can_resolve(ethernet, transformation));
    EXPECT_FALSE(can_resolve(ethernet, binding));
    EXPECT_FALSE(can_resolve(recorder, "zel_formatter_data_source_binding_t2"));
    EXPECT_FALSE(can_resolve(recorder, "zel_formatter_data_source_binding_"));
    EXPECT_FALSE(can_resolve(recorder, ""));
}

TEST(services, an_unknown_name_fails_and_leaves_the_target_alone) {
    instance ethernet(ethernet_formatter());
    for (const char* const name : {binding, "zel_log_t", ""}) {
        int marker = 0;
        void* target = &marker;
        zel_error_details_t* details = nullptr;
        EXPECT_EQ(ethernet.locator->resolve(ethernet.locator->handle, name, &target, &details),
                  failed);
        const error error = take_error(details);
        EXPECT_EQ(error.code, failed);
        EXPECT_EQ(error.description, std::string("requested service '") + name + "' not found");
        EXPECT_EQ(target, &marker);
    }
}

/// Calls with the first of these arguments alone, then with ever more of them; null stands for the
/// others. The error names the first one missing.
template <typename... T>
void expect_checks(const auto& function, const std::vector<std::string>& names, T... values) {
    for (std::size_t given = 0; given < names.size(); ++given) {
        std::size_t i = 0;
        const auto next = [&](auto value) { return i++ < given ? value : nullptr; };
        const std::tuple<T...> arguments{next(values)...};
        const auto call = [&](zel_error_details_t** error) {
            return std::apply([&](T... each) { return function(each..., error); }, arguments);
        };
        zel_error_details_t* details = nullptr;
        EXPECT_EQ(call(&details), invalid_argument);
        EXPECT_EQ(take_error(details).description,
                  "argument '" + names[given] + "' was not initialized");
        // A host that wants no error record gets the status alone.
        EXPECT_EQ(call(nullptr), invalid_argument);
    }
}

TEST(services, look_ups_and_binding_check_their_arguments_in_order) {
    instance recorder;
    const auto& [resolve, can_resolve, handle] = *recorder.locator;
    void* target = nullptr;
    bool answer = true;
    expect_checks(resolve, {"handle", "service_type", "target"}, handle, binding, &target);
    expect_checks(can_resolve, {"handle", "service_type", "can_resolve"}, handle, binding, &answer);

    const auto bind =
        static_cast<const zel_formatter_data_source_binding_t*>(recorder.service(binding))->bind;
    int data_source = 0;
    void* const source = &data_source;
    const zel_data_source_provider_t provider{};
    EXPECT_EQ(bind(recorder.handle, source, &provider, nullptr), 0U);
    expect_checks(bind, {"handle", "data_source", "data_source_provider"}, recorder.handle, source,
                  &provider);
}

TEST(services, transform_checks_its_arguments_in_order) {
    const bytes block = raw_package{}.block();
    zel_package_t** packages = nullptr;
    std::size_t count = 0;
    for (const auto* const formatter : {&recorder_formatter(), &ethernet_formatter()}) {
        instance subject(*formatter);
        const zel_raw_package_t* raw = nullptr;
        const auto transform = [&](void* handle, zel_package_t*** p, std::size_t* c,
                                   const zel_allocator_t* allocator, zel_error_details_t** error) {
            return subject.transformation->transform(handle, raw, p, c, allocator, error);
        };
        const zel_allocator_t* const allocator = &subject.allocator;
        // The raw package is looked at last.
        expect_checks(transform, {"handle", "packages", "package_count", "allocator"},
                      subject.handle, &packages, &count, allocator);
        zel_error_details_t* details = nullptr;
        EXPECT_EQ(transform(subject.handle, &packages, &count, allocator, &details),
                  invalid_argument);
        EXPECT_EQ(take_error(details).description, "argument 'raw_package' was not initialized");
        raw = reinterpret_cast<const zel_raw_package_t*>(block.data());
        expect_checks(transform, {"handle", "packages", "package_count", "allocator"},
                      subject.handle, &packages, &count, allocator);
        EXPECT_EQ(subject.array_requests, 0U);
    }
}

TEST(services, null_instances_are_harmless) {
    for (const auto* const formatter : {&recorder_formatter(), &ethernet_formatter()}) {
        EXPECT_EQ(formatter->destroy(nullptr), 0U);
        zel_service_locator_t some{};
        const zel_service_locator_t* target = &some;
        EXPECT_EQ(formatter->get_service_locator(nullptr, &target, nullptr), 0U);
        EXPECT_EQ(target, nullptr);

        expect_checks(
            [&](const zel_service_locator_t** out, zel_error_details_t** error) {
                return formatter->get_service_locator(nullptr, out, error);
            },
            {"target"}, &target);
        void* created = nullptr;
        expect_checks(
            [&](void** out, zel_error_details_t** error) {
                return formatter->create(out, nullptr, error);
            },
            {"instance"}, &created);
    }
}

/// Creates an instance with these services; gives the error, after checking that a failure leaves
/// the target alone.
error create(const zel_service_locator_t* locator) {
    int marker = 0;
    void* target = &marker;
    zel_error_details_t* details = nullptr;
    const zel_status_t status = recorder_formatter().create(&target, locator, &details);
    const error error = take_error(details);
    EXPECT_EQ(status, error.code);
    if (status == 0)
        EXPECT_EQ(recorder_formatter().destroy(target), 0U);
    else
        EXPECT_EQ(target, &marker);
    EXPECT_EQ(recording_zelc()->live_errors, 0);
    return error;
}

TEST(services, a_host_may_offer_no_logging) {
    host_services without_log;
    without_log.offers_log = false;
    EXPECT_EQ(create(&without_log.locator).code, 0U);
    host_services without_question;
    without_question.locator.can_resolve = nullptr;
    EXPECT_EQ(create(&without_question.locator).code, 0U);
    EXPECT_EQ(create(nullptr).code, 0U);
}

TEST(services, a_host_without_a_record_offers_nothing) {
    zel::runtime::service_locator none(nullptr);
    int marker = 0;
    void* target = &marker;
    EXPECT_FALSE(none.can_resolve("zel_log_t"));
    none.resolve("zel_log_t", &target);
    EXPECT_EQ(target, &marker);
}

TEST(services, an_unusable_logging_service_ends_the_creation) {
    void (*const spoil[])(host_services&) = {
        [](host_services& services) { services.log.handle = nullptr; },
        [](host_services& services) { services.log.log = nullptr; },
        [](host_services& services) { services.locator.resolve = nullptr; }};
    for (const auto& each : spoil) {
        host_services services;
        each(services);
        const error error = create(&services.locator);
        EXPECT_EQ(error.description, "invalid logger interface passed to logger constructor");
        EXPECT_EQ(error.code, failed);
    }
}

TEST(services, errors_of_the_hosts_look_ups_come_back_translated) {
    struct {
        std::uint32_t code;
        const char* description;
        std::uint32_t expected_code;
        const char* expected_description;
    } const cases[] = {
        {0xA00005B4, "too late", 0xA00005B4, "too late"},
        {0xA0000FA1, "dropped on purpose", 0xA0000FA1, "function not implemented"},
        {0xA0030011, "is there", 0xA0030011, "is there"},
        {0xA0030016, "not this", 0xA0030016, "not this"},
        {0xA003000C, "no memory", failed, "no memory"},
        {0xA0000FA5, "broken", failed, "broken"},
        {0x80004005, nullptr, failed, "unknwon error"},
        {0xA0030016, nullptr, 0xA0030016, "unknwon error"},
    };
    for (const auto& expected : cases) {
        for (const bool in_resolve : {false, true}) {
            host_services services;
            (in_resolve ? services.resolve_code : services.can_resolve_code) = expected.code;
            services.lookup_description = expected.description;
            const error error = create(&services.locator);
            EXPECT_EQ(error.code, expected.expected_code);
            EXPECT_EQ(error.description, expected.expected_description);
        }
    }
    // Code 1 is a note: the question is unanswered, so there is no logging.
    host_services note;
    note.can_resolve_code = 1;
    EXPECT_EQ(create(&note.locator).code, 0U);
}

} // namespace
} // namespace harness
