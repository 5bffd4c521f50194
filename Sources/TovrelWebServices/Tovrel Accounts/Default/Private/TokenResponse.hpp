#pragma once

#include <Platform/Coding/Date.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsToken.hpp>
#include <TovrelWebServices/Transport/WebResponse.hpp>

namespace tovrel::detail {

/// The token that an answer of the token endpoint holds, received at `now` unless the answer says otherwise.
///
/// Throws `TovrelAccountsError` or `WebServiceError` when the server refuses, `WebServiceError` invalidServerResponse
/// when there is no body, and `DecodingError` when the body is no token.
TovrelAccountsToken tokenOf(const WebResponse& response, Date now);

} // namespace tovrel::detail
