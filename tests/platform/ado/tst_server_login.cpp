#include "catalog_fixture.h"
#include "tests/support/rows.h"

#include "platform/ado/drivers/sqlite_logins.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>

using namespace zel;
using namespace zel::ado;
using namespace zel::test;

namespace {

QString told(const QString &folder, const QString &user = QStringLiteral("sa"),
             const QString &password = {}) {
    Connection con;
    try {
        open(con, folder, user, password);
    } catch (const Error &error) {
        return QString::number(error.number()) + u' ' + error.description();
    }
    return {};
}

/// The same, as a user to whom file modes apply, which they don't to root.
QString toldToClerk(const QString &folder) {
    int ends[2];
    if (::pipe(ends) != 0)
        qFatal("no pipe");
    const pid_t child = ::fork();
    if (child == 0) {
        const bool clerk = ::geteuid() != 0 || ::seteuid(65534) == 0;
        const QByteArray text = clerk ? told(folder).toUtf8() : QByteArray("still root");
        const bool written = ::write(ends[1], text.constData(), std::size_t(text.size())) == text.size();
        ::_exit(written ? 0 : 1);
    }
    ::close(ends[1]);
    char buffer[1000];
    const ssize_t length = ::read(ends[0], buffer, sizeof buffer);
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    return QString::fromUtf8(buffer, length);
}

void giveToClerk(const QString &path) {
    if (::geteuid() == 0 && ::chown(QFile::encodeName(path).constData(), 65534, 65534) != 0)
        qFatal("chown");
}

} // namespace

class tst_server_login : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wrongAndUnknownAlike() {
        const CatalogFolder folder;
        QCOMPARE(told(folder.path()), QString());
        QCOMPARE(told(folder.path(), "SA"), QString());
        QCOMPARE(told(folder.path(), "sa", "x"), "18456 Login failed for user 'sa'.");
        QCOMPARE(told(folder.path(), "nobody"), "18456 Login failed for user 'nobody'.");
    }

    void placesRefused() {
        const QTemporaryDir folder;
        QCOMPARE(told(folder.path()),
                 QStringLiteral("4060 The folder \"%1\" holds no catalog ZEL.db.").arg(folder.path()));
        QCOMPARE(told(folder.filePath("none")),
                 QStringLiteral("4060 There is no folder \"%1\".").arg(folder.filePath("none")));
        const QString path = folder.filePath("ZEL.db");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(5000, 'x'));
        file.close();
        QCOMPARE(told(folder.path()),
                 QStringLiteral("4060 The file \"%1\" is no catalog: it holds no database.").arg(path));
        QVERIFY(file.resize(0));
        QCOMPARE(told(folder.path()),
                 QStringLiteral("4060 The file \"%1\" is no catalog: it is empty.").arg(path));
        QCOMPARE(file.size(), 0);
        QCOMPARE(plain(path, "create table T (a)"), QString());
        QCOMPARE(told(folder.path()),
                 QStringLiteral("4060 The database \"%1\" is no catalog of this program.").arg(path));
        QVERIFY(told("postgresql://localhost").contains("PostgreSQL"));
        QVERIFY(told("SERVER1").contains("SQL Server"));
    }

    void readOnlyRefused() {
        const CatalogFolder folder;
        giveToClerk(folder.file());
        giveToClerk(folder.path());
        QCOMPARE(toldToClerk(folder.path()), QString());
        QVERIFY(QFile::setPermissions(folder.file(), QFile::ReadOwner));
        QCOMPARE(toldToClerk(folder.path()),
                 QStringLiteral("3906 The catalog \"%1\" may only be read, not written.").arg(folder.file()));
        QVERIFY(QFile::setPermissions(folder.file(), QFile::Permissions()));
        QCOMPARE(toldToClerk(folder.path()),
                 QStringLiteral("4060 The catalog \"%1\" belongs to \"%2\", who alone may use it.")
                     .arg(folder.file(), QFileInfo(folder.file()).owner()));
        QVERIFY(QFile::setPermissions(folder.file(), QFile::ReadOwner | QFile::WriteOwner));
        QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
        const QString refused = toldToClerk(folder.path());
        QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QCOMPARE(refused,
                 QStringLiteral(
                     "3906 The folder \"%1\" may only be read, not written, so its catalog can't be used.")
                     .arg(folder.path()));
    }

    void whoMayRead_data() {
        QTest::addColumn<mode_t>("folderMode");
        QTest::addColumn<mode_t>("fileMode");
        QTest::newRow("open to all") << mode_t(0777) << mode_t(0600);
        QTest::newRow("written by a group, files not the group's") << mode_t(0770) << mode_t(0600);
        QTest::newRow("only read by its group") << mode_t(02750) << mode_t(0600);
        QTest::newRow("a group's") << mode_t(02770) << mode_t(0660);
    }

    /// Whatever the maker keeps from others by default.
    void whoMayRead() {
        QFETCH(mode_t, folderMode);
        QFETCH(mode_t, fileMode);
        for (const mode_t kept : {0077, 0000}) {
            const QTemporaryDir folder;
            QCOMPARE(::chmod(folder.path().toLocal8Bit().constData(), folderMode), 0);
            const mode_t before = ::umask(kept);
            schema::createCatalog(folder.path());
            Connection con;
            open(con, folder.path());
            con.Execute("update LctPswd set Pswd = 'X'");
            ::umask(before);
            for (const char *name : {"ZEL.db", "ZEL.db-wal", "ZEL.db-shm"}) {
                struct stat found {};
                QCOMPARE(::stat(folder.filePath(name).toLocal8Bit().constData(), &found), 0);
                QCOMPARE(found.st_mode & 07777, fileMode);
            }
        }
    }

    void othersFoldersRefused() {
        const QTemporaryDir folder;
        giveToClerk(folder.path());
        const QFileInfo place(folder.path());
        for (const mode_t mode : {02070, 0070}) {
            QCOMPARE(::chmod(folder.path().toLocal8Bit().constData(), mode), 0);
            const QString refused = toldToClerk(folder.path());
            QVERIFY2(refused.contains(mode & S_ISGID ? " " + place.group() + "\"; then log in"
                                                     : "to \"" + place.owner() + "\", who alone"),
                     qPrintable(refused));
        }
        ::chmod(folder.path().toLocal8Bit().constData(), 0700);
    }

    void serverProcedures() {
        OpenCatalog catalog;
        catalog.con.Execute("sp_addlogin 'ÑUSRA','PASS1','Ward_System'");
        QCOMPARE(told(catalog.path(), "ñusra", "PASS1").left(4), "4060");
        catalog.con.Execute("sp_adduser 'ÑUSRA'");
        QCOMPARE(told(catalog.path(), "ñusra", "PASS1"), QString());
        QCOMPARE(told(catalog.path(), "ÑUSRA", "pass1").left(5), "18456");
        catalog.con.Execute("Sp_AddSrvroleMember 'ÑUSRA','sysadmin'");

        QCOMPARE(refusal(catalog.con, "sp_addlogin 'ñusra','OTHER','Ward_System'"), 15025);
        QCOMPARE(refusal(catalog.con, "sp_adduser 'ñusra'"), 15023);
        QCOMPARE(refusal(catalog.con, "sp_adduser 'NOBODY'"), 15007);
        QCOMPARE(refusal(catalog.con, "Sp_AddSrvroleMember 'NOBODY','sysadmin'"), 15007);
        QCOMPARE(refusal(catalog.con, "Sp_AddSrvroleMember 'ÑUSRA','king'"), 15402);
        try { // a value that only the engine meets
            catalog.con.Execute("select 1 from LctPswd where cast(Pswd + '"_sql + secret("PASS9") +
                                "' as int) = 1");
            QFAIL("converted");
        } catch (const Error &error) {
            QCOMPARE(error.description(),

                     "Conversion failed when converting the varchar value '***' to data type int.");
        }
        QVERIFY(!plain(catalog.file(), "select Hash from sys_logins").contains("PASS1"));
        QCOMPARE(plain(catalog.file(), "select count(*) from sys_logins where Hash like '$argon2id$%'"), "2");
    }

    void rights() {
        OpenCatalog catalog;
        catalog.con.Execute("sp_addlogin 'CLERK','PASS1','ZEL'");
        catalog.con.Execute("sp_adduser 'CLERK'");
        Connection clerk;
        open(clerk, catalog.path(), "clerk", "PASS1");
        QCOMPARE(refusal(clerk, "sp_addlogin 'OTHER','P','ZEL'"), 15247);
        QCOMPARE(refusal(clerk, "Sp_AddSrvroleMember 'CLERK','sysadmin'"), 15247);
        QCOMPARE(refusal(clerk, "sp_password '','P','sa'"), 15247);
        clerk.Execute("sp_password 'PASS1','PASS2','CLERK'");
        QCOMPARE(told(catalog.path(), "CLERK", "PASS2"), QString());
    }

    void passwords() {
        OpenCatalog catalog;
        catalog.con.Execute("sp_addlogin 'CLERK','PASS1','ZEL'");
        catalog.con.Execute("sp_adduser 'CLERK'");
        QCOMPARE(refusal(catalog.con, "sp_password 'WRONG','PASS2','CLERK'"), 15211);
        QCOMPARE(told(catalog.path(), "CLERK", "PASS1"), QString());
        QCOMPARE(refusal(catalog.con, "sp_password 'PASS1','PASS2','NOBODY'"), 15007);
        catalog.con.Execute("sp_password 'PASS1','PASS2','CLERK'");
        QCOMPARE(told(catalog.path(), "CLERK", "PASS1").left(5), "18456");
        QCOMPARE(told(catalog.path(), "CLERK", "PASS2"), QString());
    }

    /// A wrong password and an unknown login take the same time; a pair that is known takes none.
    void hashesVerified() {
        OpenCatalog catalog;
        catalog.con.Execute("sp_addlogin 'CLERK','PASS1','ZEL'");
        catalog.con.Execute("sp_adduser 'CLERK'");
        const struct {
            const char *user;
            const char *password;
            bool taken;
            int hashes;
        } logins[] = {{"CLERK", "PASS1", true, 1},  {"CLERK", "PASS1", true, 0},
                      {"CLERK", "PASS2", false, 1}, {"NOBODY", "PASS1", false, 1},
                      {"NOBODY", "", false, 1},     {"CLERK", "PASS1", true, 0}};
        for (const auto &login : logins) {
            const std::int64_t before = SqliteLogins::verified();
            QCOMPARE(told(catalog.path(), login.user, login.password).isEmpty(), login.taken);
            QCOMPARE(SqliteLogins::verified() - before, login.hashes);
        }
    }

    void ownTablesAreOutOfReach_data() {
        QTest::addColumn<QString>("statement");
        for (const char *statement :
             {"select * from sys_logins", "select Hash from SYS_LOGINS", "delete from sys_users",
              "update sys_logins set Hash = ''", "insert into sys_rolemembers values ('clerk','sysadmin')",
              "drop table sys_procedures", "select * from sqlite_master", "delete from sqlite_sequence"})
            row(statement, QString::fromLatin1(statement));
    }

    void ownTablesAreOutOfReach() {
        QFETCH(QString, statement);
        OpenCatalog catalog;
        QVERIFY(refusal(catalog.con, Sql::trusted(statement.toStdString())) != 0);
        QCOMPARE(told(catalog.path()), QString());
    }
};

QTEST_GUILESS_MAIN(tst_server_login)
#include "tst_server_login.moc"
