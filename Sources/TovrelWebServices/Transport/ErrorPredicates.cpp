#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInError.hpp>
#include <TovrelWebServices/Transport/ErrorPredicates.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

namespace tovrel {

bool isCancelled(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const CancellationError&) {
        return true;
    } catch (const URLError& urlError) {
        return urlError.kind() == URLError::Kind::cancelled;
    } catch (const AuthorizationError& authorizationError) {
        return authorizationError.kind() == AuthorizationError::Kind::cancelled;
    } catch (const TovrelAppleSignInError& signInError) {
        return signInError.underlying() && isCancelled(signInError.underlying());
    } catch (...) {
        return false;
    }
}

bool isNotConnected(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const WebServiceError& webServiceError) {
        return webServiceError.kind() == WebServiceError::Kind::notConnectedToInternet;
    } catch (const URLError& urlError) {
        return urlError.kind() == URLError::Kind::notConnectedToInternet;
    } catch (...) {
        return false;
    }
}

} // namespace tovrel
