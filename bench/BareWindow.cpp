// A minimal Qt program with a window, to compare Cabslot's window with.
#include <QApplication>
#include <QLabel>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QLabel label("A label");
    label.resize(471, 560); // about Cabslot's window
    label.show();
    return QApplication::exec();
}
