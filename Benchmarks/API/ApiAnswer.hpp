#pragma once

#include <TovrelWebServices/Services/ApiWebResponseObject.hpp>

#include <JSON/Records.hpp>
#include <string>
#include <vector>

namespace tovrel::benchmarks {

/// Below which path of the API's host the answer is.
extern const char* const apiPath;

/// The host that every contender asks for, with the server's port behind it.
std::string apiHost();

/// As long as the tokens of real servers are, which are signed.
std::string accessToken();

using ApiAnswer = ApiWebResponseObject<std::vector<Record>>;

/// What the server answers to a call.
ApiAnswer apiAnswer();

/// The answer as it travels.
std::string apiAnswerBody();

} // namespace tovrel::benchmarks
