// Another program from which files are dragged: a small window that offers them, and says on standard output
// the answers it gets.
//
//   kalmora_drag_source copy|move|both never|moved|always FILE...
//
// The first word: which actions it offers; where it may move, it proposes to. The second: when it deletes its
// files: never, when it reads "move" in any answer, or on any answer that ends a drag.
//
//   over ACCEPTED ACTION      the answer while the files are over a window
//   result ACTION             what the toolkit makes of it at the drop
//   finished ACCEPTED ACTION  the last answer
#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QDrag>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

enum class Deletes { Never, WhenMoved, Always };

void Say(const char* what, const QByteArray& how) {
    std::printf("%s %s\n", what, how.constData());
    std::fflush(stdout);
}

class Source final : public QWidget, public QAbstractNativeEventFilter {
public:
    Source(Qt::DropActions offered, Deletes deletes, QStringList files)
        : offered_(offered), deletes_(deletes), files_(std::move(files)) {
        setWindowTitle("Drag source");
        setGeometry(1050, 100, 120, 80);
    }

    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) return false;
        const auto* answer = reinterpret_cast<const xcb_client_message_event_t*>(event);
        const QByteArray type = NameOf(answer->type);
        const QByteArray accepted = (answer->data.data32[1] & 1) != 0 ? "1 " : "0 ";
        if (type == "XdndStatus") Say("over", accepted + NameOf(answer->data.data32[4]));
        if (type == "XdndFinished") {
            const QByteArray action = NameOf(answer->data.data32[2]);
            Say("finished", accepted + action);
            Delete(action == "XdndActionMove");
        }
        return false;
    }

protected:
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!event->buttons().testFlag(Qt::LeftButton)) return;
        auto* const data = new QMimeData;
        QList<QUrl> urls;
        for (const QString& file : files_)
            urls.append(QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()));
        data->setUrls(urls);
        auto* const drag = new QDrag(this);
        drag->setMimeData(data);
        const bool mayMove = offered_.testFlag(Qt::MoveAction);
        const Qt::DropAction result = drag->exec(offered_, mayMove ? Qt::MoveAction : Qt::CopyAction);
        Say("result", QByteArray::number(result));
        if (result == Qt::MoveAction) Delete(true);
    }

private:
    static QByteArray NameOf(xcb_atom_t atom) {
        auto* const connection = qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        auto* const reply = xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr);
        if (!reply) return "none";
        const QByteArray name(xcb_get_atom_name_name(reply), xcb_get_atom_name_name_length(reply));
        std::free(reply);
        return name;
    }

    void Delete(bool isMoved) const {
        if (deletes_ == Deletes::Never || (deletes_ == Deletes::WhenMoved && !isMoved)) return;
        for (const QString& file : files_) QFile::remove(file);
    }

    const Qt::DropActions offered_;
    const Deletes deletes_;
    const QStringList files_;
};

Qt::DropActions Offered(const char* word) {
    if (std::strcmp(word, "copy") == 0) return Qt::CopyAction;
    return std::strcmp(word, "move") == 0 ? Qt::DropActions(Qt::MoveAction) : Qt::CopyAction | Qt::MoveAction;
}

Deletes DeletesWhen(const char* word) {
    if (std::strcmp(word, "never") == 0) return Deletes::Never;
    return std::strcmp(word, "moved") == 0 ? Deletes::WhenMoved : Deletes::Always;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList words = QApplication::arguments();
    if (words.size() < 4) return 2;
    Source source(Offered(words[1].toUtf8()), DeletesWhen(words[2].toUtf8()), words.mid(3));
    application.installNativeEventFilter(&source);
    source.show();
    return QApplication::exec();
}
