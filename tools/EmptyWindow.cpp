// SPDX-License-Identifier: MIT
// A Qt program with an empty window: what the start-up of TarnvikControl is compared with.
#include <QApplication>
#include <QMainWindow>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setWindowTitle(u"EmptyWindow"_s);
    window.show();
    return QApplication::exec();
}
