#pragma once

#include <QProcess>
#include <QString>

namespace zel::test {

struct Ran {
    int status;
    QString out;
    QString err;
};

inline QString zeldbPath() {
    return QStringLiteral(ZEL_BINARY_DIR "/bin/zeldb");
}

inline Ran ended(QProcess &process) {
    if (!process.waitForFinished(60'000) || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}, process.errorString()};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

inline Ran zeldb(const QStringList &arguments, const QByteArray &input = {}) {
    QProcess process;
    process.start(zeldbPath(), arguments);
    process.write(input);
    process.closeWriteChannel();
    return ended(process);
}

/// A limit of the size of files stands for a disk that gets full.
inline Ran zeldbOnFullDisk(int kilobytes, const QStringList &arguments) {
    QProcess process;
    const QString command = QStringLiteral("trap '' XFSZ; ulimit -f %1; exec \"$0\" \"$@\"").arg(kilobytes);
    process.start("bash", QStringList{"-c", command, zeldbPath()} + arguments);
    return ended(process);
}

} // namespace zel::test
