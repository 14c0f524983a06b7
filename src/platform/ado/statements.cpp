#include "platform/ado/statements.h"

#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/base/error.h"
#include "platform/tsql/reading/secrets.h"
#include "platform/tsql/text/names.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <span>
#include <utility>

namespace zel::ado {

namespace {

using tsql::Statement;
using tsql::StatementKind;

/// The schema's work tables, which procedures refill before each report, bear this before their names.
bool isWorkTable(const std::string &name) {
    return QLatin1String(name.data(), qsizetype(name.size()))
        .startsWith(QLatin1String("rpt"), Qt::CaseInsensitive);
}

bool writes(const Statement &statement) {
    return statement.kind > StatementKind::Select && statement.kind < StatementKind::Assign;
}

bool asksEngine(const Statement &statement) {
    return writes(statement) || !statement.sql.empty();
}

/// What it writes is made anew before it is read, or is the connection's own, so that nobody waits for it to
/// be on the disk.
bool isPassing(const Statement &statement) {
    const bool fills = statement.kind == StatementKind::Insert || statement.kind == StatementKind::Update ||
                       statement.kind == StatementKind::Delete;
    return tsql::isTemporary(statement.name) || (fills && isWorkTable(statement.name));
}

/// Runs the statements of one text: holds its variables, goes its ways, tells what each written statement
/// left.
class Batch {
public:
    Batch(Driver &driver, const Sql &text, std::vector<Statement> &statements,
          const std::function<void(Outcome)> &told, Reading reading)
        : m_driver(driver), m_text(text), m_statements(statements), m_told(told), m_reading(reading),
          m_variables(driver.kept()) {}
    ~Batch() {
        if (m_transaction)
            m_driver.rollback();
        m_variables.resize(tsql::KeptSlots);
        m_driver.kept() = std::move(m_variables);
    }
    Batch(const Batch &) = delete;
    Batch &operator=(const Batch &) = delete;

    void run() {
        std::size_t place = 0;
        try {
            while (place < m_statements.size())
                place = step(place);
        } catch (const Error &error) {
            // What the server's procedures refuse tells of logins and roles, of no password.
            if (m_statements[place].kind == StatementKind::ServerCall)
                throw;
            throw tsql::withoutSecrets(error, m_text);
        }
    }

private:
    /// Runs one statement; the place of the next.
    std::size_t step(std::size_t place) {
        Statement &statement = m_statements[place];
        switch (statement.kind) {
        case StatementKind::Jump:
            return statement.next;
        case StatementKind::JumpUnless: {
            m_driver.assign(statement, m_variables);
            setRowCount(statement, 0);
            const bool holds = m_variables[statement.targets.front()] == Value(1);
            return holds ? place + 1 : statement.next;
        }
        case StatementKind::Assign:
            setRowCount(statement, m_driver.assign(statement, m_variables));
            break;
        case StatementKind::EachRow:
            setRowCount(statement, m_driver.assign(statement, m_variables, [&] {
                for (std::size_t inner = place + 1; inner < statement.next; ++inner)
                    m_driver.assign(m_statements[inner], m_variables);
            }));
            return statement.next;
        case StatementKind::SetOption:
            setRowCount(statement, 0);
            break;
        case StatementKind::Enter:
            enter(place);
            break;
        case StatementKind::Leave:
            leave();
            break;
        default:
            ask(statement);
        }
        return place + 1;
    }

    void ask(Statement &statement) {
        if (statement.kind == StatementKind::Select) {
            if (!beginReading(statement))
                readAll(statement);
        } else {
            fillArguments(statement);
            const std::int64_t changed = m_driver.run(statement, m_variables);
            setRowCount(statement, changed);
            m_outcome.rowsAffected += changed;
            if (statement.kind == StatementKind::Insert)
                setIdentity(statement, changed);
        }
        if (m_depth == 0)
            tell();
    }

    bool beginReading(Statement &select) {
        if (!m_reading.onDemand || m_statements.size() > 1)
            return false;
        std::unique_ptr<RowSource> source = m_driver.readOnDemand(select, m_variables);
        if (!source)
            return false;
        select.baseTable.clear();
        m_outcome.rows = std::make_shared<RowSet>(select.columns, std::move(source));
        m_outcome.statement = std::move(select);
        return true;
    }

    void readAll(Statement &select) {
        auto rows = m_driver.query(select, m_variables, m_reading.most);
        setRowCount(select, rows->rowCount());
        if (m_outcome.rows)
            return;
        m_outcome.rowsAffected = rows->rowCount();
        m_outcome.rows = std::move(rows);
        m_outcome.statement = std::move(select);
    }

    void fillArguments(Statement &call) const {
        for (std::size_t i = 0; i < call.arguments.size(); ++i) {
            const tsql::Slot slot = call.targets[i];
            if (slot != 0 && !m_variables[slot].isNull())
                call.arguments[i] = m_variables[slot].text().toStdString();
        }
    }

    void setRowCount(const Statement &statement, std::int64_t count) {
        if (!statement.keepsRowCount)
            m_variables[tsql::RowCountSlot] = count;
    }

    void setIdentity(const Statement &insert, std::int64_t rows) {
        const bool made = insert.makesIdentity && rows > 0;
        m_variables[tsql::IdentitySlot] = made ? Value(m_driver.lastIdentity()) : Value();
        if (!made)
            return;
        m_variables.resize(std::max<std::size_t>(m_variables.size(), insert.scopeIdentity + 1));
        m_variables[insert.scopeIdentity] = m_variables[tsql::IdentitySlot];
    }

    /// All statements of a procedure are one transaction, unless one is open already.
    void enter(std::size_t place) {
        if (m_depth++ > 0 || m_driver.inTransaction())
            return;
        const std::span<const Statement> body =
            std::span(m_statements).subspan(place, m_statements[place].next - place);
        if (std::ranges::count_if(body, asksEngine) < 2 || std::ranges::none_of(body, writes))
            return;
        m_driver.begin(
            std::ranges::all_of(
                body, [](const Statement &statement) { return !writes(statement) || isPassing(statement); })
                ? Durability::Later
                : Durability::Now);
        m_transaction = true;
    }

    void leave() {
        if (--m_depth > 0)
            return;
        if (m_transaction)
            m_driver.commit();
        m_transaction = false;
        tell();
    }

    void tell() { m_told(std::exchange(m_outcome, {})); }

    Driver &m_driver;
    const Sql &m_text;
    std::vector<Statement> &m_statements;
    const std::function<void(Outcome)> &m_told;
    Reading m_reading;
    Variables m_variables;
    Outcome m_outcome; ///< of the written statement that is under way
    int m_depth = 0;   ///< of procedures
    bool m_transaction = false;
};

/// One statement on tables, whose meaning hangs on nothing but the schema.
bool isSteady(const std::vector<Statement> &statements, const Sql &text) {
    return statements.size() == 1 && statements[0].kind <= StatementKind::Delete &&
           text.text().find('#') == std::string_view::npos;
}

/// A text without foreign pieces is said again and again, and read once.
std::vector<Statement> read(Driver &driver, const Sql &text) {
    driver.refresh();
    if (!text.pieces().empty())
        return tsql::translate(text, driver, driver.traits());
    Readings &known = driver.readings();
    if (const auto found = known.find(text.text()); found != known.end())
        return found->second;
    std::vector<Statement> statements = tsql::translate(text, driver, driver.traits());
    if (!isSteady(statements, text))
        return statements;
    constexpr std::size_t Most = 256; // more than the program has; a script may have any number
    if (known.size() >= Most)
        known.clear();
    return known.emplace(text.text(), std::move(statements)).first->second;
}

} // namespace

void runStatements(Driver &driver, const Sql &text, const std::function<void(Outcome)> &told,
                   Reading reading) {
    std::vector<Statement> statements = read(driver, text);
    Batch(driver, text, statements, told, reading).run();
}

void requireReachable(const QString &dataSource) {
    if (dataSource.startsWith(QLatin1String("postgresql://")))
        throw Error(17,
                    QStringLiteral("This build can't reach a PostgreSQL server (\"%1\").").arg(dataSource));
}

std::unique_ptr<Driver> openCatalog(const QString &dataSource, const QString &user, const QString &password) {
    requireReachable(dataSource);
    const bool embedded = dataSource == QLatin1String(".") || dataSource.startsWith(QLatin1String("./")) ||
                          dataSource.startsWith(QLatin1String("../")) || dataSource.startsWith(u'/');
    if (dataSource.trimmed().isEmpty())
        throw Error(17, QStringLiteral("Server.txt begins with no folder of a catalog."));
    if (!embedded)
        throw Error(17,
                    QStringLiteral("This build can't reach a SQL Server (\"%1\"). The folder of a catalog "
                                   "is written with \"/\", \"./\" or \"../\" at its beginning.")
                        .arg(dataSource));
    const QString folder = QDir::isAbsolutePath(dataSource)
                               ? dataSource
                               : QCoreApplication::applicationDirPath() + u'/' + dataSource;
    return SqliteDriver::open(QDir::cleanPath(folder),
                              Credentials{user.toStdString(), password.toStdString()});
}

std::unique_ptr<Driver> openAsOwner(const QString &place) {
    requireReachable(place);
    return SqliteDriver::open(place, std::nullopt);
}

std::unique_ptr<Driver> openForReading(const QString &place) {
    requireReachable(place);
    return SqliteDriver::openForReading(place);
}

} // namespace zel::ado
