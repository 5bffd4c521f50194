#include <algorithm>
#include <HTTP/HTTPClient.hpp>
#include <QCoreApplication>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <stdexcept>

namespace tovrel::benchmarks {

namespace {

void needApplication() {
    static int argumentCount = 1;
    static char name[] = "tovrel_benchmarks";
    static char* arguments[] = {name, nullptr};
    static const QCoreApplication application(argumentCount, arguments);
}

class QtClient final : public HTTPClient {
public:
    explicit QtClient(const Endpoint& endpoint)
        : endpoint_(endpoint), security_(QSslConfiguration::defaultConfiguration()) {
        security_.setCaCertificates(QSslCertificate::fromPath(QString::fromStdString(endpoint.certificateFile)));
    }

    void get(const Load& load) override {
        load_ = &load;
        toBegin_ = load.count;
        running_ = 0;
        failure_.clear();
        for (std::size_t index = 0; index < std::min(load.atOnce, load.count); ++index) {
            begin();
        }
        loop_.exec();
        if (!failure_.empty()) {
            throw std::runtime_error("Qt: " + failure_);
        }
    }

private:
    void begin() {
        --toBegin_;
        ++running_;
        QNetworkRequest request(QUrl(QString::fromStdString(endpoint_.url(load_->path))));
        request.setSslConfiguration(security_);
        request.setAttribute(QNetworkRequest::Http2AllowedAttribute, endpoint_.isHTTP2);
        for (const auto& [name, value] : requestFields()) {
            // With a value of the caller's own the library would leave decoding to the caller.
            if (name != "Accept-Encoding") {
                request.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
            }
        }
        QNetworkReply* reply = manager_.get(request);
        QObject::connect(reply, &QNetworkReply::finished, reply, [this, reply] { finish(*reply); });
    }

    void finish(QNetworkReply& reply) {
        const QByteArray body = reply.readAll();
        const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (reply.error() != QNetworkReply::NoError) {
            failure_ = reply.errorString().toStdString();
        } else if (status != 200 || static_cast<std::size_t>(body.size()) != load_->bodySize) {
            failure_ = "an unexpected response";
        }
        reply.deleteLater();
        --running_;
        if (toBegin_ > 0 && failure_.empty()) {
            begin();
        } else if (running_ == 0) {
            loop_.quit();
        }
    }

    Endpoint endpoint_;
    QSslConfiguration security_;
    QNetworkAccessManager manager_;
    QEventLoop loop_;
    const Load* load_ = nullptr;
    std::size_t toBegin_ = 0;
    std::size_t running_ = 0;
    std::string failure_;
};

} // namespace

HTTPPeer qtNetwork() {
    return HTTPPeer("QNetworkAccessManager", [](const Endpoint& endpoint, unsigned /*connections*/) {
        needApplication();
        return std::make_unique<QtClient>(endpoint);
    });
}

} // namespace tovrel::benchmarks
