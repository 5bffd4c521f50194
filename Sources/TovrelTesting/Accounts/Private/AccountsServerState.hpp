#pragma once

#include <TovrelTesting/Accounts/AccountsServerOptions.hpp>
#include <TovrelTesting/Accounts/Private/TokenLedger.hpp>
#include <TovrelTesting/Accounts/Private/UserBook.hpp>
#include <TovrelTesting/Private/SigningKey.hpp>
#include <TovrelTesting/ScriptedResponse.hpp>

#include <deque>
#include <mutex>

namespace tovrel::testing {

/// What the resources of an accounts server share. The mutex guards what stands below it and is held for no callback,
/// the clock included.
class AccountsServerState {
public:
    explicit AccountsServerState(const AccountsServerOptions& serverOptions)
        : options(serverOptions), ledger(serverOptions.lifetimes) {}

    const AccountsServerOptions options;
    const SigningKey key;

    std::mutex mutex;
    TokenLedger ledger;
    UserBook users;
    AccountsServerCounts counts;
    std::deque<ScriptedResponse> nextAnswers;
};

} // namespace tovrel::testing
