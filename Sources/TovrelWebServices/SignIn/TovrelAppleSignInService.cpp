#include <TovrelWebServices/SignIn/TovrelAppleSignInService.hpp>

namespace tovrel {

TovrelAppleSignInService::TovrelAppleSignInService() = default;

TovrelAppleSignInService::~TovrelAppleSignInService() = default;

} // namespace tovrel
