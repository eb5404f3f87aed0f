#pragma once

#include <QCoreApplication>

// L'application Qt des tests qui ont besoin de la boucle du fil principal, créée une fois.
inline QCoreApplication& ApplicationTest()
{
    static int argc = 1;
    static char nom[] = "noyau_test";
    static char* argv[] = {nom, nullptr};
    static QCoreApplication application(argc, argv);
    return application;
}

// Sert la boucle du fil principal jusqu'à ce que la condition tienne.
template <typename Condition> void ServsJusqua(Condition condition)
{
    while (!condition()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}
