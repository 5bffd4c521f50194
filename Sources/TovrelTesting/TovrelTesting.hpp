#pragma once

/// @file
/// All of TovrelTesting.

#include <TovrelTesting/BackEndStatistics.hpp>
#include <TovrelTesting/ContentCoding.hpp>
#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelTesting/Fault.hpp>
#include <TovrelTesting/GeneratedBytes.hpp>
#include <TovrelTesting/HeaderLine.hpp>
#include <TovrelTesting/InMemoryTovrelAccountsStorage.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>
#include <TovrelTesting/LocalBackEndError.hpp>
#include <TovrelTesting/LocalBackEndOptions.hpp>
#include <TovrelTesting/LocalSession.hpp>
#include <TovrelTesting/ManualClock.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>
#include <TovrelTesting/ScriptedResponse.hpp>
