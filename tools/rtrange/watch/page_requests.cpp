#include "tools/rtrange/watch/page_requests.hpp"

#include <string>
#include <utility>

#include <fmt/format.h>
#include <httplib.h>

namespace rtrange {
namespace {

/// The page brings all of its parts along, and nobody may put it into a page of their own.
constexpr const char* content_security_policy =
    "default-src 'none'; script-src 'unsafe-inline'; style-src 'unsafe-inline'; img-src data:; "
    "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

/// The status of the answer: 200, or why there is none.
int status_for(const httplib::Request& request, const listen_address& address) {
    // The events have no length, and the library would cut the text of a refusal.
    if (request.has_header("Range"))
        return 416;
    if (request.get_header_value_count("Host") != 1 ||
        !accepts_host(address, request.get_header_value("Host")))
        return 403;
    if (request.method != "GET")
        return 405;
    if (request.path != "/" && request.path != "/events")
        return 404;
    return 200;
}

/// For those who have opened the page under another name.
std::string how_to_open(const listen_address& address) {
    if (is_wildcard(address))
        return "Open this page by the IP address of this machine, not by a name.\n";
    return fmt::format("Open this page by the address {}, not by a name.\n", text_of(address));
}

void answer(const httplib::Request& request, httplib::Response& response,
            const listen_address& address, const page_answers& answers) {
    response.status = status_for(request, address);
    if (response.status == 405)
        response.set_header("Allow", "GET");
    if (response.status == 403)
        response.set_content(how_to_open(address), "text/plain; charset=utf-8");
    if (response.status != 200)
        return;
    if (request.path == "/")
        answers.page(response);
    else
        answers.events(response);
}

} // namespace

void answer_requests(httplib::Server& server, const listen_address& address, page_answers answers) {
    server.set_default_headers({{"Content-Security-Policy", content_security_policy},
                                {"X-Content-Type-Options", "nosniff"},
                                {"Referrer-Policy", "no-referrer"},
                                {"Cache-Control", "no-store"}});
    server.set_pre_routing_handler(
        [address, answers = std::move(answers)](const auto& request, auto& response) {
            answer(request, response, address, answers);
            return httplib::Server::HandlerResponse::Handled;
        });
}

} // namespace rtrange
