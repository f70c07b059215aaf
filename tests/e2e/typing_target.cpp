// A text widget as applications have them; what is in it is kept in a file.
//
// Usage: typing_target FILE
#include <QApplication>
#include <QFile>
#include <QPlainTextEdit>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QPlainTextEdit edit;
    edit.setWindowTitle("KALVO cible");
    QObject::connect(&edit, &QPlainTextEdit::textChanged, [&] {
        QFile file(QApplication::arguments().at(1));
        if (file.open(QIODevice::WriteOnly)) file.write(edit.toPlainText().toUtf8());
    });
    edit.show();
    return QApplication::exec();
}
