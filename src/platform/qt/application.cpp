#include <QApplication>
#include <QBasicTimer>
#include <QGuiApplication>
#include <QScreen>
#include <QSessionManager>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "base/log.h"
#include "platform/files.h"
#include "platform/qt/decoding_gate.h"
#include "platform/qt/display.h"
#include "platform/qt/display_loss.h"
#include "platform/qt/event_watch.h"
#include "platform/qt/gui_queue.h"
#include "platform/qt/input_state.h"
#include "platform/qt/key_server.h"
#include "platform/qt/signals.h"
#include "platform/qt/values.h"
#include "platform/qt/window_qt.h"

namespace kalmora {

namespace qt {

namespace {

class QtApplication;
std::atomic<QtApplication*> theApplication = nullptr;

// Wakes a waiting loop when its time has run out; the event itself is nothing.
class Alarm final : public QObject {
public:
    explicit Alarm(int milliseconds) { timer_.start(std::max(milliseconds, 1), Qt::PreciseTimer, this); }

protected:
    void timerEvent(QTimerEvent*) override { timer_.stop(); }

private:
    QBasicTimer timer_;
};

class QtApplication final : public Application {
public:
    QtApplication(const std::string& name, Display display);
    ~QtApplication() override;

    int Run() override;
    void Quit(int code) override;
    void Post(std::function<void()> work) override { GuiQueue::Instance().Post(std::move(work)); }
    bool IsGuiThread() const override { return QThread::currentThread() == guiThread_; }
    void ProcessEvents(int milliseconds) override;

    EventWatch& Watch() { return watch_; }

private:
    enum class Refusal { Possible, Impossible };
    static void CloseWindows(Refusal refusal);

    // The toolkit keeps references to these as long as it exists.
    std::string name_;
    int argumentCount_ = 1;
    std::vector<char*> arguments_;
    EventWatch watch_;
    std::unique_ptr<QApplication> toolkit_;
    std::unique_ptr<EndSignals> endSignals_;
    QThread* guiThread_ = nullptr;
    std::atomic<bool> isQuitting_ = false;
    std::atomic<int> quitCode_ = 0;
    bool isDisplayLost_ = false;
};

QtApplication::QtApplication(const std::string& name, Display display)
    : name_(name), arguments_{name_.data(), nullptr} {
    WatchMessages();
    DecodingGate::Instance().Open();
    toolkit_ = std::make_unique<QApplication>(argumentCount_, arguments_.data());
    // Numbers in files have a point in every language of the user, and the movie player requires it.
    std::setlocale(LC_NUMERIC, "C");
    guiThread_ = QThread::currentThread();
    QCoreApplication::setApplicationName(ToQt(name));
    // No display name: the toolkit would hang it behind every title that the program sets.
    QGuiApplication::setApplicationDisplayName(QString());
    QGuiApplication::setDesktopFileName(ToQt(name).toLower());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    toolkit_->installEventFilter(&watch_);
    GuiQueue::Instance().Open();

    InputState& input = InputState::Instance();
    if (QGuiApplication::platformName() == QLatin1String("xcb")) input.Connect();
    input.ReadScreens();
    const auto readScreens = [] { InputState::Instance().ReadScreens(); };
    const auto watchScreen = [readScreens](QScreen* screen) {
        readScreens();
        QObject::connect(screen, &QScreen::geometryChanged, screen, readScreens);
        QObject::connect(screen, &QScreen::physicalDotsPerInchChanged, screen, readScreens);
    };
    for (QScreen* screen : QGuiApplication::screens()) watchScreen(screen);
    QObject::connect(toolkit_.get(), &QGuiApplication::screenAdded, toolkit_.get(), watchScreen);
    QObject::connect(toolkit_.get(), &QGuiApplication::screenRemoved, toolkit_.get(), readScreens);

    if (display == Display::None) return;
    QObject::connect(toolkit_.get(), &QGuiApplication::commitDataRequest, toolkit_.get(),
                     [](QSessionManager&) { CloseWindows(Refusal::Possible); });
    endSignals_ = std::make_unique<EndSignals>([this] {
        CloseWindows(Refusal::Impossible);
        if (!isQuitting_) Quit(0);
    });
}

QtApplication::~QtApplication() {
    theApplication = nullptr;
    GuiQueue::Instance().Close();
    KeyServer::Instance().Close();
    endSignals_.reset();
    if (!EndDecoding() || isDisplayLost_) {
        // The toolkit can be taken down neither under a decode nor without its display; the process ends
        // next.
        [[maybe_unused]] QApplication* left = toolkit_.release();
        return;
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    toolkit_.reset();
}

// The first window is the main one, whose end usually ends the others.
void QtApplication::CloseWindows(Refusal refusal) {
    std::vector<std::shared_ptr<QtWindow::Link>> links;
    for (QtWindow* window : OpenWindows()) links.push_back(window->GetLink());
    for (const auto& link : links) {
        if (link->window != nullptr) link->window->RequestClose();
        if (link->window != nullptr && refusal == Refusal::Impossible) link->window->Close();
    }
}

int QtApplication::Run() {
    if (!isQuitting_) {
        try {
            const DisplayLossScope scope;
            QApplication::exec();
        } catch (const DisplayLost&) {
            isDisplayLost_ = true;
            Log("[Application] the display has gone");
            CloseWindows(Refusal::Impossible);
        }
    }
    return quitCode_;
}

void QtApplication::Quit(int code) {
    quitCode_ = code;
    isQuitting_ = true;
    Post([] { QCoreApplication::exit(0); });
}

void QtApplication::ProcessEvents(int milliseconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    QCoreApplication::sendPostedEvents();
    if (milliseconds > 0) {
        const Alarm alarm(milliseconds);
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    const auto rest =
        std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    QCoreApplication::processEvents(QEventLoop::AllEvents, std::max(0, static_cast<int>(rest.count())));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace

}  // namespace qt

std::unique_ptr<Application> Application::Create(const std::string& name, Display display, double scale) {
    constexpr char kScaleFactor[] = "QT_SCALE_FACTOR";
    const std::string chosenPlatform = files::Environment(qt::kPlatformVariable);
    if (qt::theApplication != nullptr || qApp != nullptr || !qt::PreparePlatform(display)) return nullptr;
    if (scale > 0) qputenv(kScaleFactor, QByteArray::number(scale));
    auto application = std::make_unique<qt::QtApplication>(name, display);
    // Meant for this process; the programs that it starts choose for themselves.
    if (scale > 0) qunsetenv(kScaleFactor);
    if (chosenPlatform.empty()) qunsetenv(qt::kPlatformVariable);
    qt::theApplication = application.get();
    return application;
}

Application* TheApplication() { return qt::theApplication.load(); }

void SetAccelerators(Window* target, AcceleratorHook hook) {
    qt::QtApplication* application = qt::theApplication;
    if (application == nullptr) return;
    application->Watch().SetAccelerators(
        target == nullptr ? nullptr : static_cast<qt::QtWindow*>(target)->GetLink(), std::move(hook));
}

Point CursorPosition() { return qt::InputState::Instance().Now().position; }

bool IsLeftButtonDown() { return qt::InputState::Instance().Now().leftButton; }

bool IsControlDown() { return qt::InputState::Instance().Now().control; }

}  // namespace kalmora
