#include <Platform/Concurrency/EventLoopQueue.hpp>
#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/AccountScreens/Private/ModuleResources.hpp>
#include <TovrelWebServices/AccountScreens/QtMainActor.hpp>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QObject>
#include <QtCore/QThread>

namespace tovrel {

namespace {

/// Answers each event with one operation. It is never destroyed: any thread may still post to it when the application
/// has gone, and Qt then keeps or drops the event.
class Doorbell final : public QObject {
public:
    Doorbell() : queue_(EventLoopQueue::make([this] { ring(); })) {}

    [[nodiscard]] EventLoopQueue& queue() { return queue_; }

protected:
    void customEvent(QEvent* event) override {
        if (event->type() == ringType()) {
            queue_.runNext();
        }
    }

private:
    static QEvent::Type ringType() {
        static const int type = QEvent::registerEventType();
        return static_cast<QEvent::Type>(type);
    }

    void ring() { QCoreApplication::postEvent(this, new QEvent(ringType())); }

    EventLoopQueue& queue_;
};

} // namespace

void QtMainActor::install() {
    const QCoreApplication* application = QCoreApplication::instance();
    if (application == nullptr) {
        fatalError("The main actor needs an application object.");
    }
    if (QThread::currentThread() != application->thread()) {
        fatalError("The main actor is installed on the application's thread.");
    }
    moduleBundle();
    static Doorbell& doorbell = *new Doorbell();
    static const bool isInstalled = [] {
        MainActor::install(doorbell.queue().executor());
        return true;
    }();
    if (isInstalled && doorbell.thread() != application->thread()) {
        fatalError("All application objects of a process live on one thread.");
    }
    doorbell.queue().ringAgain();
}

} // namespace tovrel
