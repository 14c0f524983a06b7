#include "tests/support/test_program.h"

#include "platform/controls/application.h"

#include <QMessageBox>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace zel::test {

namespace {

/// Answers the failure box when it comes up, and prints its text for the process that waits.
class SceneApplication : public controls::Application {
public:
    using Application::Application;

    bool notify(QObject *receiver, QEvent *event) override {
        const bool result = Application::notify(receiver, event);
        if (controls::Application::failing() && event->type() == QEvent::Show)
            if (auto *box = qobject_cast<QMessageBox *>(receiver)) {
                std::fprintf(stdout, "BOX %s\n", box->text().toUtf8().constData());
                QMetaObject::invokeMethod(box, &QDialog::accept, Qt::QueuedConnection);
            }
        return result;
    }
};

int playHere(int argc, char *argv[], const Scenes &scenes) {
    SceneApplication application(argc, argv);
    const auto scene = scenes.find(qEnvironmentVariable("ZEL_SCENE"));
    if (scene == scenes.end())
        qFatal("no such scene");
    return application.run([&scene] {
        scene->second();
        std::_Exit(0); // nothing after the scene may change its result
    });
}

} // namespace

int run(int argc, char *argv[], QObject &tests, const Scenes &scenes) {
    if (qEnvironmentVariableIsSet("ZEL_SCENE"))
        return playHere(argc, argv, scenes);
    SceneApplication application(argc, argv); // a failure ends the tests instead of waiting for a click
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&tests, argc, argv);
}

Ended play(const QString &scene) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ZEL_SCENE", scene);
    const QTemporaryDir leftovers; // a program that ends at once leaves its folder behind
    environment.insert("TMPDIR", leftovers.path());
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {});
    if (!process.waitForFinished(60'000)) {
        process.kill();
        process.waitForFinished();
        return {-2, "the scene did not end: " + QString::fromUtf8(process.readAllStandardError()), {}};
    }
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    Ended ended;
    ended.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    ended.errorStream = QString::fromUtf8(process.readAllStandardError());
    if (const qsizetype at = output.indexOf("BOX "); at >= 0)
        ended.box = output.mid(at + 4).trimmed();
    return ended;
}

void expectEnd(const QString &scene, const QString &box, const char *file, int line) {
    const Ended ended = play(scene);
    const QString told = QString("%1, %2\n%3").arg(ended.status).arg(ended.box, ended.errorStream);
    const QString number = ended.box.section(':', 0, 0).toLower() + ": ";
    QTest::qVerify(ended.status == 1 && ended.box.startsWith(box) && number.startsWith("error ") &&
                       ended.errorStream.contains(number),
                   "ends by the failure", qPrintable(told), file, line);
}

} // namespace zel::test
