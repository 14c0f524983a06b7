#include "tests/support/rows.h"
#include <QProcess>
#include <QTest>

using namespace zel::test;

/// What the user sees, and what the process gives back, when nobody catches a failure.

class tst_failures : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void endsTheProgram_data() {
        columns<QString, QString>("number", "description");
        for (const char *way : {"click", "key", "enter", "timer", "queued call", "load", "activation",
                                "unload", "main window closes", "nested box", "after a box", "open menu",
                                "nested loop", "before the first screen", "through a noexcept call"})
            row(way, "105", "Unclosed quotation mark after the character string 'x'.");
        row("standard exception", "51", "out of paper");
    }

    void endsTheProgram() {
        const auto [number, description] = fetched<QString, QString>();
        QProcess program;
        program.start(QCoreApplication::applicationDirPath() + "/failing_program", {QTest::currentDataTag()});
        QVERIFY2(program.waitForFinished(20000), "the program goes on");
        const QString said = QString::fromUtf8(program.readAllStandardOutput());
        const QString errors = QString::fromUtf8(program.readAllStandardError());
        QCOMPARE(said, QString("box: ZEL: Error %1://%2\n").arg(number, description));
        QVERIFY2(errors.contains(QString("ZEL: error %1: %2\n").arg(number, description)),
                 qPrintable(errors));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 1);
    }
};

QTEST_GUILESS_MAIN(tst_failures)
#include "tst_failures.moc"
