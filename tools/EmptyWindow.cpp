// SPDX-License-Identifier: MIT
// A Qt program with an empty window, or with a text in it: what TarnvikControl's start-up and memory are
// compared with.
//   EmptyWindow [TEXT]
#include <QApplication>
#include <QLabel>
#include <QMainWindow>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setWindowTitle(u"EmptyWindow"_s);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() > 1)
        window.setCentralWidget(new QLabel(arguments.at(1)));
    window.show();
    return QApplication::exec();
}
