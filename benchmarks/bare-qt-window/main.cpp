// The least that a Qt Widgets program can do: one window. What the application's start is compared with.

#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QWidget window;
    window.show();
    return QApplication::exec();
}
