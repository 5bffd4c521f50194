#include <algorithm>
#include <HTTP/HTTPClient.hpp>
#include <libsoup/soup.h>
#include <stdexcept>

namespace tovrel::benchmarks {

namespace {

class SoupClient final : public HTTPClient {
public:
    SoupClient(const Endpoint& endpoint, unsigned connections) : endpoint_(endpoint), context_(g_main_context_new()) {
        GError* error = nullptr;
        GTlsDatabase* trusted = g_tls_file_database_new(endpoint.certificateFile.c_str(), &error);
        if (trusted == nullptr) {
            throw std::runtime_error(error->message);
        }
        const auto most = static_cast<int>(connections);
        g_main_context_push_thread_default(context_);
        session_ = soup_session_new_with_options("max-conns", most, "max-conns-per-host", most, "tls-database", trusted,
                                                 nullptr);
        g_main_context_pop_thread_default(context_);
        g_object_unref(trusted);
    }

    ~SoupClient() override {
        g_object_unref(session_);
        g_main_context_unref(context_);
    }

    void get(const Load& load) override {
        load_ = &load;
        toBegin_ = load.count;
        running_ = 0;
        failure_.clear();
        g_main_context_push_thread_default(context_);
        for (std::size_t index = 0; index < std::min(load.atOnce, load.count); ++index) {
            begin();
        }
        while (running_ > 0) {
            g_main_context_iteration(context_, TRUE);
        }
        g_main_context_pop_thread_default(context_);
        if (!failure_.empty()) {
            throw std::runtime_error("libsoup: " + failure_);
        }
    }

private:
    void begin() {
        --toBegin_;
        ++running_;
        SoupMessage* message = soup_message_new(SOUP_METHOD_GET, endpoint_.url(load_->path).c_str());
        SoupMessageHeaders* headers = soup_message_get_request_headers(message);
        for (const auto& [name, value] : requestFields()) {
            soup_message_headers_append(headers, name.c_str(), value.c_str());
        }
        soup_session_send_and_read_async(session_, message, G_PRIORITY_DEFAULT, nullptr, &SoupClient::onDone, this);
        g_object_unref(message);
    }

    static void onDone(GObject* source, GAsyncResult* result, gpointer data) {
        auto& client = *static_cast<SoupClient*>(data);
        auto* session = reinterpret_cast<SoupSession*>(source);
        const SoupStatus status = soup_message_get_status(soup_session_get_async_result_message(session, result));
        GError* error = nullptr;
        GBytes* body = soup_session_send_and_read_finish(session, result, &error);
        if (body == nullptr) {
            client.failure_ = error->message;
            g_error_free(error);
        } else {
            if (status != SOUP_STATUS_OK || g_bytes_get_size(body) != client.load_->bodySize) {
                client.failure_ = "an unexpected response";
            }
            g_bytes_unref(body);
        }
        --client.running_;
        if (client.toBegin_ > 0 && client.failure_.empty()) {
            client.begin();
        }
    }

    Endpoint endpoint_;
    GMainContext* context_;
    SoupSession* session_;
    const Load* load_ = nullptr;
    std::size_t toBegin_ = 0;
    std::size_t running_ = 0;
    std::string failure_;
};

} // namespace

HTTPPeer libsoup() {
    return HTTPPeer("libsoup 3", [](const Endpoint& endpoint, unsigned connections) {
        return std::make_unique<SoupClient>(endpoint, connections);
    });
}

} // namespace tovrel::benchmarks
