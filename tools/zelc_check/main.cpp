// Checks a host's zelc against the rules of docs/zelc.md.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <vector>

#include "tools/zelc_check/rule.hpp"

namespace {

using namespace zelc_check;

/// The rules in the order of their lines.
std::vector<rule> rules;
/// Index of the rule whose check is running.
std::size_t current = 0;
/// Rules whose checks other threads can repeat.
std::vector<rule> kept;
bool all_kept = true;
bool exceptions_seen = false;

void print(const char* id, const char* verdict, const char* text) {
    std::printf("%s %s%s%s\n", id, verdict, *text != '\0' ? ": " : "", text);
    std::fflush(stdout);
}

void print_broken(const char* id, const char* text) {
    print(id, "broken", text);
    all_kept = false;
}

// NOLINTBEGIN(bugprone-signal-handler): after a crash the program ends here in any case
extern "C" void report_crash(int signal) {
    std::signal(signal, SIG_DFL);
    char text[80]; // allocates nothing, because the heap may be damaged
    std::snprintf(text, sizeof(text), "expected the function to return, saw signal %d", signal);
    print_broken(rules[current].id, text);
    for (std::size_t i = current + 1; i < rules.size(); ++i)
        print(rules[i].id, "not checkable", "the library has crashed");
    std::_Exit(1);
}
// NOLINTEND(bugprone-signal-handler)

void check_exports(const zelc& library) {
    expect(library.missing().empty(), "nine exports", "none of these names: " + library.missing());
}

void check_threads(const zelc& library) {
    if (!all_kept)
        throw not_checkable("another rule is broken on a single thread");
    check_on_threads(library, kept);
}

void check_exceptions(const zelc&) {
    expect(!exceptions_seen, "no C++ exception", "one, see above");
}

void judge(const rule& rule, const zelc& library) {
    if (rule.check == nullptr)
        return print(rule.id, "not checkable", rule.obstacle);
    if (!library.missing().empty() && rule.check != check_exports)
        return print(rule.id, "not checkable", "a function is missing");
    try {
        rule.check(library);
        print(rule.id, "kept", "");
        kept.push_back(rule);
    } catch (const not_checkable& error) {
        print(rule.id, "not checkable", error.what());
    } catch (const broken_rule& error) {
        print_broken(rule.id, error.what());
    } catch (...) {
        print_broken(rule.id, "expected the function to return, saw a C++ exception");
        exceptions_seen = true;
    }
}

void append(const std::vector<rule>& more) {
    rules.insert(rules.end(), more.begin(), more.end());
}

int check(const zelc& library) {
    rules = {{"L1", check_exports, nullptr}};
    for (const auto& group : {error_rules(), package_rules(), state_rules(), common_rules()})
        append(group);
    append({{"A4", check_threads, nullptr}, {"A5", check_exceptions, nullptr}});
    for (const int signal : {SIGABRT, SIGFPE, SIGILL, SIGSEGV})
        std::signal(signal, report_crash);
    for (; current < rules.size(); ++current)
        judge(rules[current], library);
    return all_kept ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: zelc_check LIBRARY\n", stderr);
        return 2;
    }
    try {
        return check(zelc(argv[1]));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zelc_check: %s\n", error.what());
        return 2;
    }
}
