#pragma once

/// @file
/// All of TovrelTesting.

#include <TovrelTesting/Accounts/AccountsServer.hpp>
#include <TovrelTesting/Accounts/AccountsServerClient.hpp>
#include <TovrelTesting/Accounts/AccountsServerOptions.hpp>
#include <TovrelTesting/Accounts/AccountsServerRecords.hpp>
#include <TovrelTesting/BackEndStatistics.hpp>
#include <TovrelTesting/Content/ContentFile.hpp>
#include <TovrelTesting/Content/ContentServer.hpp>
#include <TovrelTesting/ContentCoding.hpp>
#include <TovrelTesting/Envelope.hpp>
#include <TovrelTesting/FakeApiWebService.hpp>
#include <TovrelTesting/FakeCdnWebService.hpp>
#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelTesting/Fault.hpp>
#include <TovrelTesting/GeneratedBytes.hpp>
#include <TovrelTesting/HeaderLine.hpp>
#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>
#include <TovrelTesting/LocalBackEndError.hpp>
#include <TovrelTesting/LocalBackEndOptions.hpp>
#include <TovrelTesting/LocalDeployment.hpp>
#include <TovrelTesting/LocalSession.hpp>
#include <TovrelTesting/ManualClock.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>
#include <TovrelTesting/ScriptedEnvelopes.hpp>
#include <TovrelTesting/ScriptedResponse.hpp>
#include <TovrelTesting/SignIn/IdentityClaims.hpp>
#include <TovrelTesting/SignIn/IdentityIssuer.hpp>
#include <TovrelTesting/SignIn/IdentityProvider.hpp>
#include <TovrelTesting/SignIn/IdentityProviderOptions.hpp>
#include <TovrelTesting/SignIn/IdentityTokenError.hpp>
#include <TovrelTesting/SignIn/IdentityUser.hpp>
#include <TovrelTesting/SignIn/SignInRelay.hpp>
