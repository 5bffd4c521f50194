#include <Platform/Concurrency/CancellationError.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/Web/SystemBrowserOpener.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <future>
#include <Support/Await.hpp>
#include <Support/TemporaryDirectory.hpp>
#include <sys/stat.h>

namespace tovrel::tests {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const URL page = *URL::parse("https://identity.example/auth?a=1&b=$HOME%20;exit%201");

class ASystemBrowserOpener : public AsyncTest {
protected:
    /// An opener with a browser that is a script.
    std::shared_ptr<SystemBrowserOpener> openerWith(const std::string& script) const {
        const std::string path = (directory.path() / "browser").string();
        std::ofstream(path) << "#!/bin/sh\n" << script << "\n";
        ::chmod(path.c_str(), 0700);
        return SystemBrowserOpener::make(path);
    }

    std::string written() const {
        std::ifstream file(directory.path() / "written");
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    std::string toFile(const std::string& command) const {
        return command + " > " + (directory.path() / "written").string();
    }

    AuthorizationError errorOf(const std::shared_ptr<SystemBrowserOpener>& opener) const {
        try {
            getInTime(opener->open(page));
        } catch (const AuthorizationError& error) {
            return error;
        }
        throw std::logic_error("it opened");
    }

    const TemporaryDirectory directory;
};

} // namespace

TEST_F(ASystemBrowserOpener, GivesTheAddressToTheProgramAsItIs) {
    getInTime(openerWith(toFile("echo \"$#\" \"$1\""))->open(page));
    EXPECT_EQ(written(), "1 " + page.absoluteString() + "\n");
}

TEST_F(ASystemBrowserOpener, GivesTheProgramNoneOfItsFiles) {
    getInTime(openerWith(toFile("ls -l /proc/self/fd"))->open(page));
    EXPECT_THAT(written(), HasSubstr("0 -> /dev/null"));
    EXPECT_THAT(written(), HasSubstr("2 -> /dev/null"));
    EXPECT_THAT(written(), Not(HasSubstr("socket")));
    EXPECT_THAT(written(), Not(HasSubstr("eventpoll")));
}

TEST_F(ASystemBrowserOpener, FailsWithTheProgram) {
    EXPECT_EQ(errorOf(openerWith("exit 3")), AuthorizationError::couldNotOpenBrowser());
    EXPECT_EQ(errorOf(openerWith("kill -9 $$")), AuthorizationError::couldNotOpenBrowser());
}

TEST_F(ASystemBrowserOpener, FailsWithoutAProgram) {
    EXPECT_EQ(errorOf(SystemBrowserOpener::make("/nowhere/browser")), AuthorizationError::couldNotOpenBrowser());
    EXPECT_EQ(errorOf(SystemBrowserOpener::make("no-such-browser-anywhere")),
              AuthorizationError::couldNotOpenBrowser());
}

TEST_F(ASystemBrowserOpener, StopsWaitingWhenItIsCancelledAndLeavesTheProgramAlone) {
    const std::string pipe = (directory.path() / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const auto opener = openerWith("read line < " + pipe + "; " + toFile("echo \"$line\""));
    auto ended = std::make_shared<std::promise<Outcome<void>>>();
    const TaskHandle task =
        start<void>(opener->open(page), [ended](Outcome<void> outcome) { ended->set_value(outcome); });
    std::ofstream toBrowser(pipe); // opens when the program does
    task.cancel();
    std::future<Outcome<void>> future = ended->get_future();
    ASSERT_EQ(future.wait_for(deadline), std::future_status::ready);
    EXPECT_THROW(future.get().value(), CancellationError);
    toBrowser << "goes on" << std::endl;
    ASSERT_TRUE(allTasksEnd());
    EXPECT_EQ(written(), "goes on\n");
}

} // namespace tovrel::tests
