#include <Platform/Concurrency/EventLoopQueue.hpp>

#include <boost/asio/execution.hpp>
#include <boost/asio/execution_context.hpp>

#include <deque>
#include <mutex>
#include <type_traits>
#include <utility>
#include <vector>

namespace tovrel {

namespace asio = boost::asio;

namespace {

/// A callable that need not be copyable.
class Step {
public:
    Step() = default;
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    virtual ~Step() = default;
    virtual void run() = 0;
};

template <class Function>
class StepOf final : public Step {
public:
    explicit StepOf(Function function) : function_(std::move(function)) {}
    void run() override { std::move(function_)(); }

private:
    Function function_;
};

} // namespace

class EventLoopQueue::Context final : public asio::execution_context {
public:
    class ContextExecutor;

    explicit Context(std::function<void()> ring) : ring_(std::move(ring)) {}

    void push(std::unique_ptr<Step> step) {
        bool mustRing = false;
        {
            const std::scoped_lock lock(mutex_);
            steps_.push_back(std::move(step));
            mustRing = !std::exchange(isRung_, true);
        }
        if (mustRing) {
            ring_();
        }
    }

    void runNext() {
        std::unique_ptr<Step> step;
        bool mustRing = false;
        {
            const std::scoped_lock lock(mutex_);
            if (!steps_.empty()) {
                step = std::move(steps_.front());
                steps_.pop_front();
            }
            mustRing = !steps_.empty();
            isRung_ = mustRing;
        }
        if (mustRing) {
            ring_();
        }
        if (step) {
            const Running running(this);
            step->run();
        }
    }

    void ringAgain() {
        bool mustRing = false;
        {
            const std::scoped_lock lock(mutex_);
            mustRing = isRung_ = !steps_.empty();
        }
        if (mustRing) {
            ring_();
        }
    }

    [[nodiscard]] bool runsInThisThread() const { return running_ == this; }

    /// Joins the thread that Asio keeps for timers.
    void stopServices() { shutdown(); }

private:
    /// Marks the thread for the time of a step.
    class Running {
    public:
        explicit Running(const Context* context) : outer_(std::exchange(running_, context)) {}
        ~Running() { running_ = outer_; }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

    private:
        const Context* outer_;
    };

    static thread_local const Context* running_;

    std::function<void()> ring_;
    std::mutex mutex_;
    std::deque<std::unique_ptr<Step>> steps_;
    bool isRung_ = false;
};

thread_local const EventLoopQueue::Context* EventLoopQueue::Context::running_ = nullptr;

/// As a strand: dispatched from within one of its operations a function runs at once, otherwise it waits its turn.
class EventLoopQueue::Context::ContextExecutor {
public:
    explicit ContextExecutor(Context& context) : context_(&context) {}

    [[nodiscard]] asio::execution_context& query(asio::execution::context_t) const noexcept { return *context_; }
    [[nodiscard]] asio::execution::blocking_t query(asio::execution::blocking_t) const noexcept {
        return mayRunInline_ ? asio::execution::blocking_t(asio::execution::blocking.possibly)
                             : asio::execution::blocking_t(asio::execution::blocking.never);
    }
    [[nodiscard]] ContextExecutor require(asio::execution::blocking_t::possibly_t) const noexcept {
        return ContextExecutor(*context_, true);
    }
    [[nodiscard]] ContextExecutor require(asio::execution::blocking_t::never_t) const noexcept {
        return ContextExecutor(*context_, false);
    }

    template <class Function>
    void execute(Function&& function) const {
        if (mayRunInline_ && context_->runsInThisThread()) {
            std::decay_t<Function> owned(std::forward<Function>(function));
            std::move(owned)();
            return;
        }
        context_->push(std::make_unique<StepOf<std::decay_t<Function>>>(std::forward<Function>(function)));
    }

    friend bool operator==(const ContextExecutor& a, const ContextExecutor& b) noexcept {
        return a.context_ == b.context_ && a.mayRunInline_ == b.mayRunInline_;
    }
    friend bool operator!=(const ContextExecutor& a, const ContextExecutor& b) noexcept { return !(a == b); }

private:
    ContextExecutor(Context& context, bool mayRunInline) : context_(&context), mayRunInline_(mayRunInline) {}

    Context* context_;
    bool mayRunInline_ = true;
};

/// All queues. Their services end at exit, they themselves stay.
class EventLoopQueue::Kept {
public:
    static Kept& instance() {
        static Kept& kept = *new Kept();
        static const AtExit atExit(kept);
        return kept;
    }

    EventLoopQueue* add(EventLoopQueue* queue) {
        const std::scoped_lock lock(mutex_);
        queues_.push_back(queue);
        return queue;
    }

private:
    class AtExit {
    public:
        explicit AtExit(Kept& kept) : kept_(kept) {}
        ~AtExit() {
            for (EventLoopQueue* queue : kept_.queues_) {
                queue->context_->stopServices();
            }
        }
        AtExit(const AtExit&) = delete;
        AtExit& operator=(const AtExit&) = delete;

    private:
        Kept& kept_;
    };

    std::mutex mutex_;
    std::vector<EventLoopQueue*> queues_;
};

EventLoopQueue::EventLoopQueue(std::function<void()> ring) : context_(std::make_unique<Context>(std::move(ring))) {}

EventLoopQueue::~EventLoopQueue() = default;

EventLoopQueue& EventLoopQueue::make(std::function<void()> ring) {
    return *Kept::instance().add(new EventLoopQueue(std::move(ring)));
}

Executor EventLoopQueue::executor() {
    return Context::ContextExecutor(*context_);
}

void EventLoopQueue::runNext() {
    context_->runNext();
}

void EventLoopQueue::ringAgain() {
    context_->ringAgain();
}

} // namespace tovrel
