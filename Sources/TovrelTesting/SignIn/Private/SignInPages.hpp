#pragma once

#include <TovrelTesting/ScriptedResponse.hpp>
#include <TovrelTesting/SignIn/IdentityUser.hpp>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tovrel::testing {

/// Names and values of a form, in their order.
using FormFields = std::vector<std::pair<std::string, std::string>>;

/// Asks the user whether the application may know who they are.
ScriptedResponse consentPage(const IdentityUser& user, std::string_view application, std::string_view ticket,
                             bool sharesUserRecord);

/// Posts the fields to a URL as soon as it is shown; without scripts, when its button is pressed.
ScriptedResponse formPostPage(std::string_view url, const FormFields& fields);

/// Says what is wrong with a request of a browser.
ScriptedResponse problemPage(std::string_view text);

} // namespace tovrel::testing
