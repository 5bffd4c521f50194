#include <TovrelWebServices/Tovrel Accounts/AccountsErrorPredicates.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsError.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

namespace tovrel {

bool isSignedOut(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const WebServiceError& webServiceError) {
        return webServiceError.kind() == WebServiceError::Kind::unauthorized;
    } catch (const TovrelAccountsError& accountsError) {
        return accountsError.error() == "invalid_grant";
    } catch (...) {
        return false;
    }
}

} // namespace tovrel
