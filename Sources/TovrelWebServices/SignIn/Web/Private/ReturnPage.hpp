#pragma once

#include <TovrelWebServices/SignIn/Web/Private/CallbackRequest.hpp>

#include <string>

namespace tovrel::detail {

/// The whole HTTP/1.1 response with a plain page that tells the user how it goes on. It closes the connection, runs no
/// script, loads nothing, is kept by nobody and leaves its address to nobody.
std::string returnPage(const CallbackVerdict& verdict);

} // namespace tovrel::detail
