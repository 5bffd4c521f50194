// What the account screens cost: the time to their first frame, and what they use while nothing happens.

#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/Start.hpp>
#include <QZFrameworkCoreLogic/Services.hpp>
#include <TovrelTesting/FakeTovrelAccountsWebService.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelWebServices/AccountScreens/AccountScreens.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInService.hpp>

#include <fmt/core.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <Harness/Measurement.hpp>
#include <Harness/Processes.hpp>
#include <memory>
#include <optional>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>
#include <stdexcept>
#include <string>
#include <vector>

namespace tovrel::benchmarks {

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;
using Instant = std::chrono::steady_clock::time_point;

constexpr int freshProcesses = 11;
constexpr std::chrono::seconds idleTime{3};

/// Signs nobody in.
class IdleSignInService final : public TovrelAppleSignInService {
public:
    Async<std::optional<TovrelAppleCredentialState>> getCredentialState(TovrelAccountsClient /*client*/) override {
        co_return std::nullopt;
    }
    void requestAuthorization(Completion /*completion*/) override {}
};

/// Runs the event loop until somebody quits it.
void runLoop(const std::function<void(QEventLoop&)>& begin) {
    QEventLoop loop;
    begin(loop);
    loop.exec();
}

double millisecondsSince(Instant start) {
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

/// Builds a screen, shows it, and gives the time from the call to its first frame.
double showFirstFrame(const TovrelUserAccountViewBuilder& builder, std::shared_ptr<HostingController>& shown) {
    const Instant start = std::chrono::steady_clock::now();
    double elapsed = 0;
    runLoop([&](QEventLoop& loop) {
        tovrel::start<std::shared_ptr<ViewController>>(
            MainActor::executor(), builder.signInViewController(TovrelUserAccountConfiguration::SignIn::make(), {}),
            [&](Outcome<std::shared_ptr<ViewController>> outcome) {
                shown = HostingController::from(outcome.value());
                QObject::connect(
                    &shown->window(), &QQuickWindow::frameSwapped, &loop,
                    [&] {
                        elapsed = millisecondsSince(start);
                        loop.quit();
                    },
                    static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
                shown->window().show();
            });
    });
    return elapsed;
}

struct Idleness {
    double cpuMilliseconds = 0;
    int frames = 0;

    Idleness() = default;
};

/// What the process does for a while in which nobody touches the screen.
Idleness idle(HostingController& shown) {
    runLoop([](QEventLoop& loop) { QTimer::singleShot(300, &loop, &QEventLoop::quit); });
    Idleness idleness;
    QObject::connect(&shown.window(), &QQuickWindow::frameSwapped, &shown.window(), [&] { ++idleness.frames; });
    const double before = processCpuSeconds();
    runLoop([](QEventLoop& loop) { QTimer::singleShot(idleTime, &loop, &QEventLoop::quit); });
    idleness.cpuMilliseconds = (processCpuSeconds() - before) * 1000;
    return idleness;
}

/// In a process of its own: prints the first frame of a new process, that of a second screen, and the idle figures.
int showScreens(int count, char** arguments) {
    const QGuiApplication application(count, arguments);
    QtMainActor::install();
    Services::default_().register_<TovrelAppleSignInService>(std::make_shared<IdleSignInService>());
    const auto accounts = testing::FakeTovrelAccountsWebService::make(testing::FakeWebRequestExecutor::make());
    const TovrelUserAccountViewBuilder builder(TovrelUserAccountsType::appleSignIn, accounts);
    std::shared_ptr<HostingController> first;
    std::shared_ptr<HostingController> second;
    const double firstFrame = showFirstFrame(builder, first);
    const double nextFrame = showFirstFrame(builder, second);
    first.reset();
    const Idleness idleness = count > 2 ? idle(*second) : Idleness();
    fmt::print("{} {} {} {}\n", firstFrame, nextFrame, idleness.cpuMilliseconds, idleness.frames);
    second.reset();
    return EXIT_SUCCESS;
}

struct Figures {
    double firstFrame = 0;
    double nextFrame = 0;
    double idleCpu = 0;
    int idleFrames = 0;

    Figures() = default;
};

Figures figuresOfAProcess(const std::vector<std::string>& arguments) {
    Figures figures;
    const std::string line = runSelf(arguments);
    if (std::sscanf(line.c_str(), "%lf %lf %lf %d", &figures.firstFrame, &figures.nextFrame, &figures.idleCpu,
                    &figures.idleFrames) != 4) {
        throw std::runtime_error("the process with the screens printed: " + line);
    }
    return figures;
}

void measureScreens() {
    std::vector<double> first;
    std::vector<double> next;
    for (int i = 0; i < freshProcesses; ++i) {
        const Figures figures = figuresOfAProcess({"show"});
        first.push_back(figures.firstFrame);
        next.push_back(figures.nextFrame);
    }
    const Figures idleness = figuresOfAProcess({"show", "idle"});
    fmt::print("\nthe sign-in screen, from the call of the builder to the first frame, drawn in software\n"
               "  in a new process            {:7.1f} ms   target <= 150 ms\n"
               "  the next one                {:7.1f} ms\n"
               "while nothing happens\n"
               "  CPU time                    {:7.2f} ms per second\n"
               "  frames                      {:7d} in {} s, target 0\n",
               median(first), median(next), idleness.idleCpu / static_cast<double>(idleTime.count()),
               idleness.idleFrames, idleTime.count());
}

} // namespace

} // namespace tovrel::benchmarks

int main(int count, char** arguments) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("QT_QUICK_BACKEND", "software", 0);
    try {
        if (count > 1) {
            return tovrel::benchmarks::showScreens(count, arguments);
        }
        tovrel::benchmarks::measureScreens();
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return EXIT_FAILURE;
    }
}
