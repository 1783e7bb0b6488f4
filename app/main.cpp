#include <QApplication>
#include <QMainWindow>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Vantreo Guide Generator"));
    window.resize(1480, 920);
    window.show();
    return app.exec();
}
