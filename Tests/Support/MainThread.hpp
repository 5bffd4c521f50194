#pragma once

#include <Platform/Concurrency/MainActor.hpp>

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>

#include <future>
#include <thread>
#include <type_traits>
#include <utility>

namespace tovrel::tests {

/// A thread that is the main actor of the test program from its first use on.
class MainThread {
public:
    static MainThread& get() {
        static MainThread instance;
        return instance;
    }

    [[nodiscard]] bool isCurrent() const { return std::this_thread::get_id() == thread_.get_id(); }

    /// Runs the function there and waits for it.
    template <class Function>
    std::invoke_result_t<Function> run(Function function) {
        std::packaged_task<std::invoke_result_t<Function>()> task(std::move(function));
        auto result = task.get_future();
        boost::asio::post(context_, std::move(task));
        return result.get();
    }

private:
    MainThread() : thread_([this] { context_.run(); }) { MainActor::install(context_.get_executor()); }

    ~MainThread() {
        context_.stop();
        thread_.join();
    }

    boost::asio::io_context context_{1};
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work_{context_.get_executor()};
    std::thread thread_;
};

} // namespace tovrel::tests
