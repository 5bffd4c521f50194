#include "CacheFixtures.hpp"

#include <Platform/URLLoading/Detail/Cache/CacheDecision.hpp>

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace tovrel::tests {

namespace {

using Action = CacheDecision::Action;
using AnswersErrors = CacheDecision::AnswersErrors;
using Policy = URLRequestCachePolicy;

constexpr std::array<Policy, 6> policies{Policy::useProtocolCachePolicy,
                                         Policy::reloadIgnoringLocalCacheData,
                                         Policy::reloadIgnoringLocalAndRemoteCacheData,
                                         Policy::returnCacheDataElseLoad,
                                         Policy::returnCacheDataDontLoad,
                                         Policy::reloadRevalidatingCacheData};

CacheDecision decided(double age, HTTPHeaders requestFields, HTTPHeaders responseFields,
                      Policy policy = Policy::useProtocolCachePolicy) {
    const StoredResponse stored = storedResponse(std::move(responseFields));
    return decide(moment.advancedBy(age), getRequest(std::move(requestFields)), policy, &stored);
}

Action action(double age, HTTPHeaders requestFields, HTTPHeaders responseFields,
              Policy policy = Policy::useProtocolCachePolicy) {
    return decided(age, std::move(requestFields), std::move(responseFields), policy).action;
}

/// A response that is fresh for a minute and can be confirmed.
HTTPHeaders minute(std::string_view more = "") {
    return HTTPHeaders{{"Cache-Control", "max-age=60" + std::string(more)}, {"ETag", "\"a\""}};
}

HTTPHeaders wanted(std::string_view cacheControl) {
    return HTTPHeaders{{"Cache-Control", std::string(cacheControl)}};
}

TEST(CacheDecision, LoadsWhatIsNotStored) {
    for (const Policy policy : policies) {
        const Action expected = policy == Policy::returnCacheDataDontLoad ? Action::failAsUnavailable : Action::load;
        EXPECT_EQ(decide(moment, getRequest(), policy, nullptr).action, expected) << static_cast<int>(policy);
    }
}

TEST(CacheDecision, AnswersWithAFreshResponse) {
    EXPECT_EQ(action(0, {}, minute()), Action::answer);
    EXPECT_EQ(action(59.5, {}, minute()), Action::answer);
}

TEST(CacheDecision, ValidatesAResponseOnceItsLifetimeIsOver) {
    const CacheDecision decision = decided(60, {}, minute());
    EXPECT_EQ(decision.action, Action::validate);
    EXPECT_EQ(decision.fields, (HTTPHeaders{{"If-None-Match", "\"a\""}}));
}

TEST(CacheDecision, LoadsAStaleResponseThatNothingCanConfirm) {
    EXPECT_EQ(action(60, {}, {{"Cache-Control", "max-age=60"}}), Action::load);
    EXPECT_EQ(action(0, {}, {}), Action::load);
}

TEST(CacheDecision, ValidatesWhereEitherSideSaysNoCache) {
    EXPECT_EQ(action(0, wanted("no-cache"), minute()), Action::validate);
    EXPECT_EQ(action(0, {{"Pragma", "no-cache"}}, minute()), Action::validate);
    EXPECT_EQ(action(0, {}, minute(", no-cache")), Action::validate);
    EXPECT_EQ(action(0, wanted("max-stale"), minute(", no-cache")), Action::validate);
    EXPECT_EQ(action(0, {}, minute(", no-cache=\"Set-Cookie\"")), Action::answer);
}

TEST(CacheDecision, HeedsTheAgeThatTheRequestAccepts) {
    EXPECT_EQ(action(10, wanted("max-age=10"), minute()), Action::answer);
    EXPECT_EQ(action(10.5, wanted("max-age=10"), minute()), Action::validate);
    EXPECT_EQ(action(1, wanted("max-age=0"), minute()), Action::validate);
    EXPECT_EQ(action(1, wanted("max-age=never"), minute()), Action::validate);
    EXPECT_EQ(action(70, wanted("max-age=600"), minute()), Action::validate);
}

TEST(CacheDecision, HeedsHowLongTheResponseMustStayFresh) {
    EXPECT_EQ(action(10, wanted("min-fresh=50"), minute()), Action::answer);
    EXPECT_EQ(action(10, wanted("min-fresh=51"), minute()), Action::validate);
    EXPECT_EQ(action(0, wanted("min-fresh=x"), minute()), Action::validate);
    EXPECT_EQ(action(70, wanted("min-fresh=0, max-stale"), minute()), Action::validate);
}

TEST(CacheDecision, AnswersWithAStaleResponseThatTheRequestAccepts) {
    EXPECT_EQ(action(70, wanted("max-stale=10"), minute()), Action::answer);
    EXPECT_EQ(action(70.5, wanted("max-stale=10"), minute()), Action::validate);
    EXPECT_EQ(action(1e9, wanted("max-stale"), minute()), Action::answer);
    EXPECT_EQ(action(70, wanted("max-stale=10, max-age=65"), minute()), Action::validate);
    EXPECT_EQ(action(70, wanted("max-stale=10, max-age=75"), minute()), Action::answer);
    EXPECT_EQ(action(70, wanted("max-stale=x"), minute()), Action::validate);
}

TEST(CacheDecision, DoesNotAnswerWithAStaleResponseThatMustBeRevalidated) {
    EXPECT_EQ(action(70, wanted("max-stale"), minute(", must-revalidate")), Action::validate);
    EXPECT_EQ(action(10, {}, minute(", must-revalidate")), Action::answer);
    EXPECT_EQ(action(70, wanted("max-stale"), minute(", proxy-revalidate")), Action::answer);
}

TEST(CacheDecision, DoesNotReloadWhatNeverChangesWhileItIsFresh) {
    EXPECT_EQ(action(10, wanted("max-age=0"), minute(", immutable")), Action::answer);
    EXPECT_EQ(action(10, wanted("no-cache"), minute(", immutable")), Action::validate);
    EXPECT_EQ(action(60, wanted("max-age=0"), minute(", immutable")), Action::validate);
    EXPECT_EQ(action(10, wanted("max-age=0"), minute()), Action::validate);
    EXPECT_EQ(action(10, wanted("min-fresh=55"), minute(", immutable")), Action::validate);
}

TEST(CacheDecision, ValidatesAResponseFromTheFuture) {
    EXPECT_EQ(action(-1, {}, minute()), Action::validate);
    EXPECT_EQ(action(-1, wanted("max-stale"), minute()), Action::validate);
}

TEST(CacheDecision, AnswersGatewayTimeoutWhereOnlyTheCacheMayAnswerAndCannot) {
    const URLRequest request = getRequest(wanted("only-if-cached"));
    EXPECT_EQ(decide(moment, request, Policy::useProtocolCachePolicy, nullptr).action, Action::answerGatewayTimeout);
    EXPECT_EQ(action(70, wanted("only-if-cached"), minute()), Action::answerGatewayTimeout);
    EXPECT_EQ(action(10, wanted("only-if-cached"), minute()), Action::answer);
    EXPECT_EQ(action(70, wanted("only-if-cached, max-stale"), minute()), Action::answer);
    URLRequest post = request;
    post.httpMethod = "POST";
    EXPECT_EQ(decide(moment, post, Policy::useProtocolCachePolicy, nullptr).action, Action::answerGatewayTimeout);
}

TEST(CacheDecision, LeavesConditionsOfTheCallerAlone) {
    const CacheDecision decision = decided(0, {{"If-None-Match", "\"mine\""}}, minute());
    EXPECT_EQ(decision, CacheDecision(Action::load));
    EXPECT_EQ(
        decided(70, {{"If-Modified-Since", std::string(momentText)}}, minute(), Policy::reloadRevalidatingCacheData),
        CacheDecision(Action::load));
    EXPECT_EQ(action(70, {{"If-None-Match", "\"mine\""}}, minute(), Policy::returnCacheDataDontLoad), Action::answer);
}

TEST(CacheDecision, DoesNotAnswerOtherRequestsThanPlainGetAndHead) {
    const StoredResponse stored = storedResponse(minute());
    for (const char* method : {"POST", "PUT", "DELETE", "OPTIONS"}) {
        URLRequest request = getRequest();
        request.httpMethod = method;
        for (const Policy policy : policies) {
            const Action expected =
                policy == Policy::returnCacheDataDontLoad ? Action::failAsUnavailable : Action::load;
            EXPECT_EQ(decide(moment, request, policy, &stored).action, expected) << method;
        }
    }
    URLRequest head = getRequest();
    head.httpMethod = "HEAD";
    EXPECT_EQ(decide(moment, head, Policy::useProtocolCachePolicy, &stored).action, Action::answer);
    EXPECT_EQ(action(0, {{"Range", "bytes=0-1"}}, minute()), Action::load);
    URLRequest withBody = getRequest();
    withBody.body = Data("{}");
    EXPECT_EQ(decide(moment, withBody, Policy::returnCacheDataElseLoad, &stored).action, Action::load);
}

TEST(CacheDecision, ReloadsPastTheLocalCache) {
    EXPECT_EQ(decided(0, {}, minute(), Policy::reloadIgnoringLocalCacheData), CacheDecision(Action::load));
}

TEST(CacheDecision, ReloadsPastEveryCache) {
    EXPECT_EQ(decided(0, {}, minute(), Policy::reloadIgnoringLocalAndRemoteCacheData),
              CacheDecision(Action::load, {{"Cache-Control", "no-cache"}, {"Pragma", "no-cache"}}));
    EXPECT_EQ(decided(0, wanted("max-age=5"), minute(), Policy::reloadIgnoringLocalAndRemoteCacheData).fields,
              (HTTPHeaders{{"Pragma", "no-cache"}}));
}

TEST(CacheDecision, ReturnsWhatIsStoredWhateverItsAge) {
    for (const Policy policy : {Policy::returnCacheDataElseLoad, Policy::returnCacheDataDontLoad}) {
        EXPECT_EQ(action(1e9, {}, minute(", must-revalidate"), policy), Action::answer);
        EXPECT_EQ(action(0, wanted("no-cache"), minute(", no-cache"), policy), Action::answer);
    }
}

TEST(CacheDecision, AsksTheOriginEveryTimeToRevalidate) {
    EXPECT_EQ(action(0, {}, minute(", immutable"), Policy::reloadRevalidatingCacheData), Action::validate);
    EXPECT_EQ(action(0, {}, {{"Cache-Control", "max-age=60"}}, Policy::reloadRevalidatingCacheData), Action::load);
    EXPECT_EQ(decided(0, {}, minute(", stale-if-error=900"), Policy::reloadRevalidatingCacheData).answersErrors,
              AnswersErrors::never);
}

TEST(CacheDecision, AnswersInPlaceOfAnErrorWhereEitherSideAllowsIt) {
    EXPECT_EQ(decided(70, {}, minute()).answersErrors, AnswersErrors::never);
    EXPECT_EQ(decided(70, {}, minute(", stale-if-error=10")).answersErrors, AnswersErrors::always);
    EXPECT_EQ(decided(70.5, {}, minute(", stale-if-error=10")).answersErrors, AnswersErrors::never);
    EXPECT_EQ(decided(70, wanted("stale-if-error=10"), minute()).answersErrors, AnswersErrors::unlessNotConnected);
    EXPECT_EQ(decided(70, wanted("stale-if-error=9"), minute()).answersErrors, AnswersErrors::never);
    EXPECT_EQ(decided(70, wanted("stale-if-error=10"), minute(", stale-if-error=10")).answersErrors,
              AnswersErrors::always);
    EXPECT_EQ(decided(70, {}, {{"Cache-Control", "max-age=60, stale-if-error=10"}}).answersErrors,
              AnswersErrors::always);
    EXPECT_EQ(decided(10, wanted("max-age=0"), minute(", stale-if-error=0")).answersErrors, AnswersErrors::always);
}

TEST(CacheDecision, DoesNotAnswerInPlaceOfAnErrorWhatHadToBeValidated) {
    EXPECT_EQ(decided(70, {}, minute(", stale-if-error=10, must-revalidate")).answersErrors, AnswersErrors::never);
    EXPECT_EQ(decided(70, {}, minute(", stale-if-error=10, no-cache")).answersErrors, AnswersErrors::never);
    EXPECT_EQ(decided(70, wanted("no-cache"), minute(", stale-if-error=10")).answersErrors, AnswersErrors::never);
}

TEST(CacheDecision, TellsTheErrorsThatAStoredResponseMayHide) {
    using Kind = URLError::Kind;
    CacheDecision decision(Action::validate);
    EXPECT_FALSE(decision.answers(Kind::timedOut));
    EXPECT_FALSE(decision.answers(503));

    decision.answersErrors = AnswersErrors::unlessNotConnected;
    for (const Kind kind :
         {Kind::timedOut, Kind::cannotFindHost, Kind::cannotConnectToHost, Kind::networkConnectionLost}) {
        EXPECT_TRUE(decision.answers(kind));
    }
    EXPECT_FALSE(decision.answers(Kind::notConnectedToInternet));
    for (const int status : {500, 502, 503, 504}) {
        EXPECT_TRUE(decision.answers(status)) << status;
    }
    for (const int status : {200, 400, 401, 404, 501, 505}) {
        EXPECT_FALSE(decision.answers(status)) << status;
    }

    decision.answersErrors = AnswersErrors::always;
    EXPECT_TRUE(decision.answers(Kind::notConnectedToInternet));
    for (const Kind kind : {Kind::cancelled, Kind::certificateUntrusted, Kind::secureConnectionFailed,
                            Kind::badServerResponse, Kind::dataLengthExceedsMaximum}) {
        EXPECT_FALSE(decision.answers(kind));
    }
}

TEST(CacheDecision, AnswersWithTheAgeOfTheMoment) {
    const StoredResponse stored = storedResponse({{"Age", "100"}, {"X", "y"}});
    EXPECT_EQ(answeredFields(stored, moment.advancedBy(2.9), false), (HTTPHeaders{{"Age", "102"}, {"X", "y"}}));
    EXPECT_EQ(answeredFields(storedResponse({}), moment, true), (HTTPHeaders{{"Age", "0"}}));
}

TEST(CacheDecision, AnswersWithoutTheFieldsThatNeedValidation) {
    const StoredResponse stored =
        storedResponse({{"Cache-Control", "no-cache=\"Set-Cookie\""}, {"Set-Cookie", "a"}, {"set-cookie", "b"}});
    EXPECT_FALSE(answeredFields(stored, moment, false).contains("set-cookie"));
    EXPECT_TRUE(answeredFields(stored, moment, true).contains("set-cookie"));
}

} // namespace

} // namespace tovrel::tests
