// The floor under the client: the least program that shows a window with the same toolkit.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.show();
    return QApplication::exec();
}
