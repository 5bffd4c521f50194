#pragma once

/// Everything of `Tovrel::WebServices`.

#include <QZFrameworkCoreLogic/TovrelLogger.hpp>
#include <TovrelContracts/AssertionCoordinator.hpp>
#include <TovrelContracts/TovrelAppIdentifier.hpp>
#include <TovrelWebServices/Services/DefaultHttpWebService.hpp>
#include <TovrelWebServices/Services/NoRetryLogicStrategy.hpp>
#include <TovrelWebServices/Services/TimesRetryLogicStrategy.hpp>
#include <TovrelWebServices/Services/WebServiceEnvironment.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesLog.hpp>
#include <TovrelWebServices/Tovrel Accounts/URLBuilder.hpp>
#include <TovrelWebServices/Transport/ErrorPredicates.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>
#include <TovrelWebServices/Transport/WebRequestConfig.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>
#include <TovrelWebServices/Transport/WebServiceUtility.hpp>
