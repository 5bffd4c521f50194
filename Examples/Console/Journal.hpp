#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/URLLoading/HTTPHeaders.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>

#include <cstdint>
#include <exception>
#include <optional>
#include <string_view>

/// Prints what a person wants to see of an exchange.
namespace journal {

/// The title of a part of the demo.
void part(std::string_view text);
void heading(std::string_view text);
void line(std::string_view text);

/// A request as the server received it, in full.
void sent(const tovrel::testing::ReceivedRequest& request);

/// Only where the request went: what it carried may be secret.
void sentTo(const tovrel::testing::ReceivedRequest& request);

void received(std::int64_t statusCode, const tovrel::HTTPHeaders& headers, const std::optional<tovrel::Data>& body);

void failed(const std::exception_ptr& error);

} // namespace journal
