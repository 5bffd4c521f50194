#include <QZFrameworkCoreLogic/Detail/Keychain/GLibContext.hpp>

#include <algorithm>
#include <chrono>

namespace tovrel::detail {

namespace {

void keepResult(GObject*, GAsyncResult* result, gpointer kept) {
    static_cast<GObjectPointer<GAsyncResult>*>(kept)->reset(G_ASYNC_RESULT(g_object_ref(result)));
}

gboolean cancel(gpointer cancellable) {
    g_cancellable_cancel(static_cast<GCancellable*>(cancellable));
    return G_SOURCE_REMOVE;
}

struct SourceDelete {
    void operator()(GSource* source) const {
        g_source_destroy(source);
        g_source_unref(source);
    }
};

/// Makes a context the one of the calls that this thread makes while this object lives.
class ThreadContext {
public:
    explicit ThreadContext(GMainContext* context) : context_(context) { g_main_context_push_thread_default(context_); }
    ThreadContext(const ThreadContext&) = delete;
    ThreadContext& operator=(const ThreadContext&) = delete;
    ~ThreadContext() { g_main_context_pop_thread_default(context_); }

private:
    GMainContext* context_;
};

} // namespace

GObjectPointer<GAsyncResult> GLibContext::wait(const GLibStart& start, Clock::Instant deadline) const {
    using std::chrono::milliseconds;
    const ThreadContext current(context_.get());
    const GObjectPointer<GCancellable> cancellable(g_cancellable_new());
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::system()->now());
    const std::unique_ptr<GSource, SourceDelete> timeout(
        g_timeout_source_new(static_cast<guint>(std::max(left, milliseconds::zero()).count())));
    g_source_set_callback(timeout.get(), cancel, cancellable.get(), nullptr);
    g_source_attach(timeout.get(), context_.get());

    GObjectPointer<GAsyncResult> result;
    start(cancellable.get(), keepResult, &result);
    while (!result) {
        g_main_context_iteration(context_.get(), TRUE);
    }
    return result;
}

void GLibContext::drain() const {
    while (g_main_context_iteration(context_.get(), FALSE)) {
    }
}

} // namespace tovrel::detail
