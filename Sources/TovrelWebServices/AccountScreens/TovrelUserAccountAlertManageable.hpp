#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/Concurrency/Outcome.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountAlert.hpp>

#include <functional>
#include <memory>
#include <optional>

namespace tovrel {

/// Whoever has a current alert; the view models have one. Owned by `std::shared_ptr`. `currentAlert` is for the main
/// actor only.
class TOVREL_EXPORT TovrelUserAccountAlertManageable
    : public std::enable_shared_from_this<TovrelUserAccountAlertManageable> {
public:
    using Operation = std::function<Async<void>()>;

    virtual ~TovrelUserAccountAlertManageable();
    TovrelUserAccountAlertManageable(const TovrelUserAccountAlertManageable&) = delete;
    TovrelUserAccountAlertManageable& operator=(const TovrelUserAccountAlertManageable&) = delete;

    /// What the screen presents; absent for nothing.
    [[nodiscard]] virtual const std::optional<TovrelUserAccountAlert>& currentAlert() const = 0;
    virtual void setCurrentAlert(std::optional<TovrelUserAccountAlert> alert) = 0;

    /// Runs the operation and tells how it ended; it does not fail itself. After a failure the current alert becomes
    /// the one for it, a little later and on the main actor: `connectionError` for `WebServiceError`'s
    /// notConnectedToInternet, `generalServiceError` for anything else. From any executor.
    [[nodiscard]] Async<Outcome<void>> performOperation(Operation operation);

protected:
    TovrelUserAccountAlertManageable();

private:
    static Async<Outcome<void>> perform(std::shared_ptr<TovrelUserAccountAlertManageable> self, Operation operation);
    static Async<void> assignCurrentAlert(std::shared_ptr<TovrelUserAccountAlertManageable> self, bool isConnected);
};

} // namespace tovrel
