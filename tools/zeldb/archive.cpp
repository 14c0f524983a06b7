#include "archive.h"

#include "console.h"
#include "platform/base/error.h"

#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zstd.h>

#include <algorithm>
#include <array>

namespace zel::tool {

namespace {

constexpr char Head[] = "ZEL backup ";
constexpr char Format[] = "1";
/// What begins a frame that readers of the format skip; its length follows, both in four bytes, the low
/// first.
constexpr quint32 Skipped = 0x184D2A50;
constexpr std::size_t SumBytes = crypto_generichash_BYTES;
constexpr std::size_t TailBytes = 8 + SumBytes;
constexpr std::size_t LongestLine = std::size_t(1) << 30;

std::string skippedFrame(std::string_view content) {
    std::array<char, 8> begin{};
    qToLittleEndian(Skipped, begin.data());
    qToLittleEndian(quint32(content.size()), begin.data() + 4);
    return std::string(begin.data(), begin.size()).append(content);
}

const unsigned char *bytes(const char *data) {
    return reinterpret_cast<const unsigned char *>(data);
}

QString text(const std::string &utf8) {
    return QString::fromStdString(utf8);
}

QJsonArray array(const std::vector<std::string> &texts) {
    QJsonArray made;
    for (const std::string &one : texts)
        made.append(text(one));
    return made;
}

std::vector<std::string> texts(const QJsonValue &array) {
    std::vector<std::string> made;
    for (const QJsonValue &one : array.toArray())
        made.push_back(one.toString().toStdString());
    return made;
}

QByteArray asJson(const ado::Inventory &inventory) {
    QJsonArray tables;
    for (const ado::TableDefinition &table : inventory.tables) {
        QJsonObject made{{"name", text(table.name)},
                         {"columns", array(table.columns)},
                         {"statement", text(table.statement)},
                         {"indexes", array(table.indexes)},
                         {"rows", qint64(table.rows)}};
        if (table.lastIdentity)
            made.insert("lastIdentity", qint64(*table.lastIdentity));
        tables.append(made);
    }
    QJsonArray logins;
    for (const ado::Login &login : inventory.logins)
        logins.append(QJsonObject{{"name", text(login.name)},
                                  {"hash", text(login.hash)},
                                  {"database", text(login.database)},
                                  {"user", login.user},
                                  {"roles", array(login.roles)}});
    return QJsonDocument(QJsonObject{{"version", qint64(inventory.version)},
                                     {"engine", text(inventory.engine)},
                                     {"taken", QDateTime::currentDateTime().toString(Qt::ISODate)},
                                     {"tables", tables},
                                     {"procedures", array(inventory.procedures)},
                                     {"logins", logins}})
        .toJson(QJsonDocument::Compact);
}

ado::Inventory inventoryOf(const QJsonObject &told) {
    ado::Inventory made;
    made.engine = told["engine"].toString().toStdString();
    made.version = told["version"].toInteger();
    for (const QJsonValue &one : told["tables"].toArray()) {
        ado::TableDefinition table;
        table.name = one["name"].toString().toStdString();
        table.columns = texts(one["columns"]);
        table.statement = one["statement"].toString().toStdString();
        table.indexes = texts(one["indexes"]);
        table.rows = one["rows"].toInteger();
        if (one["lastIdentity"].isDouble())
            table.lastIdentity = one["lastIdentity"].toInteger();
        made.tables.push_back(std::move(table));
    }
    made.procedures = texts(told["procedures"]);
    for (const QJsonValue &one : told["logins"].toArray())
        made.logins.push_back({one["name"].toString().toStdString(), one["hash"].toString().toStdString(),
                               one["database"].toString().toStdString(), one["user"].toBool(),
                               texts(one["roles"])});
    return made;
}

/// An open file, closed when it goes.
class File {
public:
    File(const QString &path, int flags)
        : m_handle(::open(QFile::encodeName(path).constData(), flags, 0600)) {}
    ~File() {
        if (m_handle >= 0)
            ::close(m_handle);
    }
    File(const File &) = delete;
    File &operator=(const File &) = delete;
    [[nodiscard]] bool isOpen() const { return m_handle >= 0; }
    [[nodiscard]] int handle() const { return m_handle; }

private:
    int m_handle;
};

/// A compressing stream, or one that undoes it.
struct Free {
    void operator()(ZSTD_CCtx *stream) const { ZSTD_freeCCtx(stream); }
    void operator()(ZSTD_DCtx *stream) const { ZSTD_freeDCtx(stream); }
};

} // namespace

struct ArchiveWriter::Private {
    explicit Private(const QString &named)
        : path(named), file(named, O_RDWR | O_CREAT | O_CLOEXEC), stream(ZSTD_createCCtx()) {}

    void must(bool done) const {
        if (!done)
            throw Error(823, QStringLiteral("The backup \"%1\" can't be written: %2; no backup was made.")
                                 .arg(path, qt_error_string()));
    }

    void write(std::string_view data) {
        crypto_generichash_update(&sum, bytes(data.data()), data.size());
        while (!data.empty()) {
            const ssize_t written = ::write(file.handle(), data.data(), data.size());
            must(written > 0 || (written < 0 && errno == EINTR));
            data.remove_prefix(std::size_t(std::max<ssize_t>(written, 0)));
        }
    }

    void compress(ZSTD_EndDirective directive) {
        ZSTD_inBuffer in{text.data(), text.size(), 0};
        std::size_t left = 1;
        while (directive == ZSTD_e_end ? left > 0 : in.pos < in.size) {
            ZSTD_outBuffer out{packed.data(), packed.size(), 0};
            left = ZSTD_compressStream2(stream.get(), &out, &in, directive);
            if (ZSTD_isError(left))
                throw std::bad_alloc(); // its only failure here
            write({packed.data(), out.pos});
        }
        text.clear();
    }

    void put() {
        if (text.size() >= Block)
            compress(ZSTD_e_continue);
    }

    static constexpr std::size_t Block = 1 << 17;
    QString path;
    File file;
    std::unique_ptr<ZSTD_CCtx, Free> stream;
    crypto_generichash_state sum{};
    std::string text; ///< not compressed yet
    std::vector<char> packed = std::vector<char>(ZSTD_CStreamOutSize());
    TableSum table;
};

ArchiveWriter::ArchiveWriter(const QString &path) : d(std::make_unique<Private>(path)) {
    d->must(d->file.isOpen());
    if (::flock(d->file.handle(), LOCK_EX | LOCK_NB) != 0)
        refuse(QStringLiteral("Another backup is being written to \"%1\"; please wait for it.").arg(path));
    d->must(::ftruncate(d->file.handle(), 0) == 0 && ::fchmod(d->file.handle(), 0600) == 0);
    crypto_generichash_init(&d->sum, nullptr, 0, SumBytes);
    d->write(skippedFrame(std::string(Head) + Format + '\n'));
}

ArchiveWriter::~ArchiveWriter() = default;

void ArchiveWriter::begin(const ado::Inventory &inventory) {
    const QByteArray line = asJson(inventory);
    d->text.append(line.constData(), std::size_t(line.size())) += '\n';
}

void ArchiveWriter::row(ado::Cells cells) {
    const std::size_t begin = d->text.size();
    appendRow(d->text, cells);
    d->table.add(std::string_view(d->text).substr(begin));
    d->put();
}

void ArchiveWriter::endTable() {
    d->table.finish();
    d->text += "\\.\t" + std::to_string(d->table.rows()) + '\t' + d->table.sum() + '\n';
    d->table = TableSum();
    d->put();
}

void ArchiveWriter::finish() {
    d->compress(ZSTD_e_end);
    std::array<char, SumBytes> sum{};
    crypto_generichash_final(&d->sum, reinterpret_cast<unsigned char *>(sum.data()), sum.size());
    d->write(skippedFrame({sum.data(), sum.size()}));
    d->must(::fsync(d->file.handle()) == 0);
    // What is verified is to come from the disk.
    ::posix_fadvise(d->file.handle(), 0, 0, POSIX_FADV_DONTNEED);
}

bool isBeingWritten(const QString &path) {
    const File file(path, O_RDONLY | O_CLOEXEC);
    return !file.isOpen() || ::flock(file.handle(), LOCK_EX | LOCK_NB) != 0;
}

struct ArchiveReader::Private {
    explicit Private(const QString &named)
        : path(named), file(named, O_RDONLY | O_CLOEXEC), stream(ZSTD_createDCtx()) {}

    [[noreturn]] void altered() const {
        refuse(
            QStringLiteral("The backup \"%1\" is cut off or was altered, so nothing was done with it; please "
                           "take another one.")
                .arg(path));
    }

    std::size_t read(char *to, std::size_t most) const {
        std::size_t size = 0;
        while (size < most) {
            const ssize_t got = ::read(file.handle(), to + size, most - size);
            if (got == 0)
                break;
            if (got < 0 && errno != EINTR)
                throw Error(
                    823, QStringLiteral("The backup \"%1\" can't be read: %2.").arg(path, qt_error_string()));
            size += std::size_t(std::max<ssize_t>(got, 0));
        }
        return size;
    }

    void checkHead() {
        const std::string wanted = skippedFrame(std::string(Head) + Format + '\n');
        std::string head(wanted.size(), '\0');
        head.resize(read(head.data(), head.size()));
        const std::size_t sameForAll =
            wanted.size() - 2; // all but the number of the format and the end of its line
        if (head.size() < wanted.size() || head.compare(8, sameForAll - 8, wanted, 8, sameForAll - 8) != 0)
            refuse(QStringLiteral("The file \"%1\" is no backup of zeldb.").arg(path));
        if (head != wanted)
            refuse(
                QStringLiteral("The backup \"%1\" is of a later version of the program; please use that one.")
                    .arg(path));
    }

    /// Holds all bytes against the sum at the end.
    void checkSum() {
        struct stat told {};
        ::fstat(file.handle(), &told);
        const auto size = std::size_t(told.st_size);
        if (size <= headEnd() + TailBytes)
            altered();
        ::lseek(file.handle(), 0, SEEK_SET);
        crypto_generichash_state state{};
        crypto_generichash_init(&state, nullptr, 0, SumBytes);
        for (std::size_t left = size - TailBytes; left > 0;) {
            const std::size_t got = read(packed.data(), std::min(left, packed.size()));
            if (got == 0)
                altered();
            crypto_generichash_update(&state, bytes(packed.data()), got);
            left -= got;
        }
        std::array<char, SumBytes> sum{};
        crypto_generichash_final(&state, reinterpret_cast<unsigned char *>(sum.data()), sum.size());
        std::array<char, TailBytes> tail{};
        if (read(tail.data(), tail.size()) != tail.size() ||
            skippedFrame({sum.data(), sum.size()}) != std::string_view(tail.data(), tail.size()))
            altered();
        ::lseek(file.handle(), off_t(headEnd()), SEEK_SET);
    }

    static std::size_t headEnd() { return skippedFrame(std::string(Head) + Format + '\n').size(); }

    /// The next line, with its end.
    std::string_view line() {
        std::size_t end = text.find('\n', at);
        while (end == std::string::npos) {
            text.erase(0, at);
            at = 0;
            const std::size_t searched = text.size();
            if (searched > LongestLine)
                altered();
            more();
            end = text.find('\n', searched);
        }
        const std::string_view found = std::string_view(text).substr(at, end + 1 - at);
        at = end + 1;
        return found;
    }

    void more() {
        if (in.pos == in.size)
            in = {packed.data(), read(packed.data(), packed.size()), 0};
        const std::size_t before = text.size();
        text.resize(before + ZSTD_DStreamOutSize());
        ZSTD_outBuffer out{text.data() + before, text.size() - before, 0};
        const std::size_t left = ZSTD_decompressStream(stream.get(), &out, &in);
        text.resize(before + out.pos);
        if (ZSTD_isError(left) || (out.pos == 0 && in.size == 0))
            altered();
    }

    /// The cells of a row's line.
    ado::Cells cells(std::string_view row, std::size_t columns) {
        row.remove_suffix(1);
        made.clear();
        plain.clear();
        plain.reserve(row.size()); // so that no cell moves
        while (made.size() < columns) {
            const std::size_t end = std::min(row.find('\t'), row.size());
            made.push_back(cell(row.substr(0, end)));
            if (end == row.size())
                break;
            row.remove_prefix(end + 1);
        }
        if (made.size() != columns)
            altered();
        return made;
    }

    std::optional<std::string_view> cell(std::string_view written) {
        if (written == "\\N")
            return std::nullopt;
        if (written.find('\\') == std::string_view::npos)
            return written;
        constexpr std::string_view Letters = "\\tnr0";
        constexpr std::string_view Meant("\\\t\n\r\0", 5);
        const std::size_t begin = plain.size();
        for (std::size_t i = 0; i < written.size(); ++i) {
            if (written[i] != '\\') {
                plain += written[i];
                continue;
            }
            const std::size_t letter = ++i < written.size() ? Letters.find(written[i]) : Letters.npos;
            if (letter == Letters.npos)
                altered();
            plain += Meant[letter];
        }
        return std::string_view(plain).substr(begin);
    }

    QString path;
    File file;
    std::unique_ptr<ZSTD_DCtx, Free> stream;
    std::vector<char> packed = std::vector<char>(ZSTD_DStreamInSize());
    ZSTD_inBuffer in{};
    std::string text; ///< not compressed any more
    std::size_t at = 0;
    std::vector<std::optional<std::string_view>> made;
    std::string plain; ///< of the cells with a backslash
    QString taken;
    ado::Inventory inventory;
};

ArchiveReader::ArchiveReader(const QString &path) : d(std::make_unique<Private>(path)) {
    if (!d->file.isOpen())
        throw Error(errors::FileNotFound,
                    QStringLiteral("The backup \"%1\" can't be opened: %2.").arg(path, qt_error_string()));
    d->checkHead();
    d->checkSum();
    const std::string_view line = d->line();
    const QJsonObject told =
        QJsonDocument::fromJson(QByteArray(line.data(), qsizetype(line.size()))).object();
    d->inventory = inventoryOf(told);
    d->taken = told["taken"].toString().replace(u'T', u' ');
    if (told.isEmpty())
        d->altered();
    if (d->inventory.version > ado::CatalogVersion)
        refuse(QStringLiteral("The backup \"%1\" is of a later version of the program; please use that one.")
                   .arg(path));
}

ArchiveReader::~ArchiveReader() = default;

const ado::Inventory &ArchiveReader::inventory() const {
    return d->inventory;
}

QString ArchiveReader::taken() const {
    return d->taken;
}

void ArchiveReader::readRows(const ado::TableDefinition &table, const std::function<void(ado::Cells)> &told) {
    TableSum sum;
    std::string_view line = d->line();
    for (; !line.starts_with("\\.\t"); line = d->line()) {
        sum.add(line);
        told(d->cells(line, table.columns.size()));
    }
    sum.finish();
    if (line != "\\.\t" + std::to_string(sum.rows()) + '\t' + sum.sum() + '\n' || sum.rows() != table.rows)
        d->altered();
}

} // namespace zel::tool
