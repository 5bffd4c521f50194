#include <Cache/QtCachePeers.hpp>
#include <memory>
#include <QCoreApplication>
#include <QEventLoop>
#include <QIODevice>
#include <QNetworkAccessManager>
#include <QNetworkCacheMetaData>
#include <QNetworkDiskCache>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <stdexcept>
#include <utility>

namespace tovrel::benchmarks {

namespace {

void needApplication() {
    static int argumentCount = 1;
    static char name[] = "tovrel_benchmarks";
    static char* arguments[] = {name, nullptr};
    static const QCoreApplication application(argumentCount, arguments);
}

class QtManager {
public:
    QtManager(const Endpoint& endpoint, const std::string& path, std::size_t bodySize,
              const std::filesystem::path& directory)
        : url_(QString::fromStdString(endpoint.url(path))),
          bodySize_(static_cast<qsizetype>(bodySize)),
          security_(QSslConfiguration::defaultConfiguration()) {
        security_.setCaCertificates(QSslCertificate::fromPath(QString::fromStdString(endpoint.certificateFile)));
        auto* cache = new QNetworkDiskCache(&manager_);
        cache->setCacheDirectory(QString::fromStdString(directory.string()));
        manager_.setCache(cache);
        get(false);
    }

    void get(bool mustBeCached) {
        QNetworkRequest request(url_);
        request.setSslConfiguration(security_);
        request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::PreferCache);
        const std::unique_ptr<QNetworkReply> reply(manager_.get(request));
        QEventLoop loop;
        QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        if (!reply->isFinished()) {
            loop.exec();
        }
        const bool isCached = reply->attribute(QNetworkRequest::SourceIsFromCacheAttribute).toBool();
        if (reply->readAll().size() != bodySize_ || (mustBeCached && !isCached)) {
            throw std::runtime_error("Qt: " + reply->errorString().toStdString());
        }
    }

    /// The store alone, without the request and its checks.
    void read() {
        const QNetworkCacheMetaData head = manager_.cache()->metaData(url_);
        const std::unique_ptr<QIODevice> body(manager_.cache()->data(url_));
        if (!head.isValid() || !body || body->readAll().size() != bodySize_) {
            throw std::runtime_error("Qt: the cache has lost its entry");
        }
    }

private:
    QUrl url_;
    qsizetype bodySize_;
    QSslConfiguration security_;
    QNetworkAccessManager manager_;
};

} // namespace

std::vector<Contender> qtCacheHits(const Endpoint& endpoint, const std::string& path, std::size_t bodySize,
                                   std::size_t hits, const std::filesystem::path& directory) {
    needApplication();
    const auto manager = std::make_shared<QtManager>(endpoint, path, bodySize, directory);
    std::vector<Contender> contenders;
    contenders.emplace_back("QNetworkDiskCache alone", [manager, hits] {
        for (std::size_t i = 0; i < hits; ++i) {
            manager->read();
        }
    });
    contenders.emplace_back("QNetworkAccessManager with it", [manager, hits] {
        for (std::size_t i = 0; i < hits; ++i) {
            manager->get(true);
        }
    });
    return contenders;
}

} // namespace tovrel::benchmarks
