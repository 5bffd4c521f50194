#pragma once

/// Everything of `Tovrel::WebServices`.

#include <QZFrameworkCoreLogic/Cacheable.hpp>
#include <QZFrameworkCoreLogic/CacheItemConfiguration.hpp>
#include <QZFrameworkCoreLogic/Dependency.hpp>
#include <QZFrameworkCoreLogic/Keychain.hpp>
#include <QZFrameworkCoreLogic/KeychainAccessibility.hpp>
#include <QZFrameworkCoreLogic/KeychainConfiguration.hpp>
#include <QZFrameworkCoreLogic/KeychainError.hpp>
#include <QZFrameworkCoreLogic/Services.hpp>
#include <QZFrameworkCoreLogic/StringURLEncoding.hpp>
#include <QZFrameworkCoreLogic/TovrelLogger.hpp>
#include <QZFrameworkCoreUI/DebugWindowManager.hpp>
#include <QZFrameworkCoreUI/UserInterfaceStyle.hpp>
#include <QZFrameworkCoreUI/ViewController.hpp>
#include <QZFrameworkCoreUI/Window.hpp>
#include <TovrelContracts/Application.hpp>
#include <TovrelContracts/AssertionCoordinator.hpp>
#include <TovrelContracts/Service.hpp>
#include <TovrelContracts/ServiceContainer.hpp>
#include <TovrelContracts/ServiceContainerError.hpp>
#include <TovrelContracts/ServiceProvider.hpp>
#include <TovrelContracts/TovrelAppIdentifier.hpp>
#include <TovrelContracts/TovrelTeamIdentifier.hpp>
#include <TovrelWebServices/Services/AnyApiWebResponseObject.hpp>
#include <TovrelWebServices/Services/ApiEmptyDataResponse.hpp>
#include <TovrelWebServices/Services/ApiResponseMeta.hpp>
#include <TovrelWebServices/Services/ApiWebResponseObject.hpp>
#include <TovrelWebServices/Services/ApiWebService.hpp>
#include <TovrelWebServices/Services/CacheableApiResponse.hpp>
#include <TovrelWebServices/Services/CdnWebService.hpp>
#include <TovrelWebServices/Services/DefaultApiWebService.hpp>
#include <TovrelWebServices/Services/DefaultCdnWebService.hpp>
#include <TovrelWebServices/Services/DefaultHttpWebService.hpp>
#include <TovrelWebServices/Services/HttpWebService.hpp>
#include <TovrelWebServices/Services/NoRetryLogicStrategy.hpp>
#include <TovrelWebServices/Services/RetryLogicStrategy.hpp>
#include <TovrelWebServices/Services/TaskSleeper.hpp>
#include <TovrelWebServices/Services/TimesRetryLogicStrategy.hpp>
#include <TovrelWebServices/Services/TovrelDomainServiceError.hpp>
#include <TovrelWebServices/Services/TovrelDomainWebService.hpp>
#include <TovrelWebServices/Services/TovrelEnvironment.hpp>
#include <TovrelWebServices/Services/WebService.hpp>
#include <TovrelWebServices/Services/WebServiceEnvironment.hpp>
#include <TovrelWebServices/SignIn/AppleIDButton.hpp>
#include <TovrelWebServices/SignIn/AppleIDCredential.hpp>
#include <TovrelWebServices/SignIn/AuthorizationCredential.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/AuthorizationPresentation.hpp>
#include <TovrelWebServices/SignIn/AuthorizationProvider.hpp>
#include <TovrelWebServices/SignIn/AuthorizationRequest.hpp>
#include <TovrelWebServices/SignIn/DefaultTovrelAppleSignInService.hpp>
#include <TovrelWebServices/SignIn/PersonNameComponents.hpp>
#include <TovrelWebServices/SignIn/TovrelAccountTopPresentedScreenHelper.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleCredentialState.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInButtonConfig.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInButtonViewModel.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInError.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInService.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInServiceProvider.hpp>
#include <TovrelWebServices/SignIn/TovrelSignInButtonType.hpp>
#include <TovrelWebServices/SignIn/TovrelSignInCustomButton.hpp>
#include <TovrelWebServices/SignIn/Web/BrowserOpener.hpp>
#include <TovrelWebServices/SignIn/Web/SystemBrowserOpener.hpp>
#include <TovrelWebServices/SignIn/Web/WebAuthorizationConfiguration.hpp>
#include <TovrelWebServices/SignIn/Web/WebAuthorizationProvider.hpp>
#include <TovrelWebServices/Support/LocalizedString.hpp>
#include <TovrelWebServices/Support/ResourceBundle.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesInstance.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesLog.hpp>
#include <TovrelWebServices/Tovrel Accounts/AccessTokenValidator.hpp>
#include <TovrelWebServices/Tovrel Accounts/AccountsErrorPredicates.hpp>
#include <TovrelWebServices/Tovrel Accounts/AppleIssuerBodyParamBuilder.hpp>
#include <TovrelWebServices/Tovrel Accounts/ClientIssuerBodyParamBuilder.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/DefaultTovrelAccountsWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/IssuerBodyParamBuilder.hpp>
#include <TovrelWebServices/Tovrel Accounts/JWT.hpp>
#include <TovrelWebServices/Tovrel Accounts/KeychainTovrelAccountsStorage.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsBodyParameter.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsClient.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsError.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsErrorResponse.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsEvent.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsIssuer.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsLogoutReason.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsRealm.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsStorage.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsToken.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsType.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsUserProfile.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebServiceProvider.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebServiceStatus.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAuthenticatedUserProfile.hpp>
#include <TovrelWebServices/Tovrel Accounts/URLBuilder.hpp>
#include <TovrelWebServices/Transport/AcceptEncodingType.hpp>
#include <TovrelWebServices/Transport/AcceptLanguage.hpp>
#include <TovrelWebServices/Transport/CachePolicy.hpp>
#include <TovrelWebServices/Transport/ContentType.hpp>
#include <TovrelWebServices/Transport/DecodingStrategy.hpp>
#include <TovrelWebServices/Transport/ErrorPredicates.hpp>
#include <TovrelWebServices/Transport/HttpMethod.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>
#include <TovrelWebServices/Transport/WebRequestable.hpp>
#include <TovrelWebServices/Transport/WebRequestCacheDefinition.hpp>
#include <TovrelWebServices/Transport/WebRequestConfig.hpp>
#include <TovrelWebServices/Transport/WebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebResponse.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>
#include <TovrelWebServices/Transport/WebServiceUtility.hpp>
