// Saving a bank payment of three lines through the voucher store, in the steps of the screen's cmdSave but
// its search list, against a bare write of 4 KiB that is brought to the same disk; and how often a save asks
// the disk to bring it down.
#include "desk.h"
#include "measure.h"

#include "platform/controls/application.h"
#include "platform/controls/grid.h"
#include "shell/module1.h"
#include "vouchers/voucher_store.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstring>

namespace {

/// What was synchronised: the log, or (by a checkpoint) the catalog itself.
struct Syncs {
    int log = 0;
    int catalog = 0;
} syncs;

void count(int file) {
    char path[4096];
    const ssize_t length = readlink(("/proc/self/fd/" + std::to_string(file)).c_str(), path, sizeof path - 1);
    path[length < 0 ? 0 : length] = '\0';
    if (std::strstr(path, "ZEL.db-wal"))
        ++syncs.log;
    else if (std::strstr(path, "ZEL.db"))
        ++syncs.catalog;
}

} // namespace

// The engine's calls come here instead of to the C library.
extern "C" int fsync(int file) {
    count(file);
    return int(syscall(SYS_fsync, file));
}
extern "C" int fdatasync(int file) {
    count(file);
    return int(syscall(SYS_fdatasync, file));
}

namespace {

using namespace zel::vouchers;

constexpr int Lines = 3;

void fill(zel::controls::Grid &grid, const VoucherKind &kind) {
    grid.setRows(Lines + 1);
    grid.setCols(int(kind.entry.columns.size()));
    for (int row = 1; row <= Lines; ++row)
        for (int col = 0; col < grid.Cols(); ++col) {
            const zel::shell::LineColumn &column = kind.entry.columns[std::size_t(col)];
            const bool debit = column.box.control == std::string_view("txtDrAc");
            grid.setTextMatrix(row, col,
                               column.box.part == zel::shell::Part::Tag
                                   ? QString::number(33 + row + 5 * debit)
                               : column.picture == zel::shell::Picture::Amount ? QString("1,250.50")
                                                                               : QString("TEXT %1").arg(row));
        }
}

void saveVoucher(const VoucherKind &kind, const VoucherLines &lines, bool numbered) {
    static std::int64_t own = 10'000'000;
    zel::ado::Transaction whole(zel::shell::gCon);
    const VoucherHeader header{numbered ? nextNumber(kind, 1) : QString::number(++own),
                               QDate(2025, 12, 1),
                               {"PAYEE"},
                               *zel::Decimal::parse("3751.5")};
    writeHeader(kind, header, true);
    replaceLines(kind, header, lines);
    whole.commit();
}

/// Overwrites pages of a file that stands on the disk already, as a log in use does.
class BareFile {
public:
    explicit BareFile(const QString &path)
        : m_file(open(path.toUtf8().constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        for (int page = 0; page < Pages; ++page)
            write(page);
        fdatasync(m_file);
    }
    ~BareFile() { close(m_file); }
    BareFile(const BareFile &) = delete;
    BareFile &operator=(const BareFile &) = delete;
    void writeThrough(int pages = 1) {
        for (int page = 0; page < pages; ++page)
            write(++m_page % Pages);
        fdatasync(m_file);
    }

private:
    void write(int page) {
        m_bytes[0] = char(page);
        if (pwrite(m_file, m_bytes, sizeof m_bytes, off_t(page) * off_t(sizeof m_bytes)) < 0)
            qFatal("the disk can't be written");
    }
    static constexpr int Pages = 1000;
    int m_file;
    int m_page = 0;
    char m_bytes[4096] = {};
};

/// All that this process has handed to write calls, in bytes.
long written() {
    long bytes = 0;
    if (std::FILE *file = std::fopen("/proc/self/io", "r")) {
        if (std::fscanf(file, "rchar: %*d wchar: %ld", &bytes) != 1)
            bytes = 0;
        std::fclose(file);
    }
    return bytes;
}

/// Saves outside of checkpoints must synchronise once. The one after a checkpoint begins the log anew, which
/// is counted with the checkpoint.
bool synchronisations(const std::function<void()> &save) {
    constexpr int saves = 400;
    int steady = 0;
    int most = 0;
    int least = 1000;
    int checkpoints = 0;
    int atCheckpoints = 0;
    bool after = true;
    const long before = written();
    for (int i = 0; i < saves; ++i) {
        syncs = {};
        save();
        const bool checkpoint = syncs.catalog > 0;
        checkpoints += checkpoint;
        if (checkpoint || after) {
            atCheckpoints += syncs.log + syncs.catalog;
        } else {
            ++steady;
            most = std::max(most, syncs.log);
            least = std::min(least, syncs.log);
        }
        after = checkpoint;
    }
    const long pages = (written() - before) / saves / 4096;
    const bool once = most == 1 && least == 1;
    std::printf(
        "%-58s %d..%d a save  must be 1  %s   (%d saves; %d checkpoints and the saves after them apart: "
        "%d in all)\n",
        "synchronisations while vouchers are saved", least, most, once ? "ok  " : "OVER", steady, checkpoints,
        atCheckpoints);
    std::printf("    a save writes %ld pages of 4 KiB, checkpoints included\n", pages);
    return once;
}

} // namespace

int main(int argc, char **argv) {
    zel::controls::Application application(argc, argv);
    bool within = true;
    {
        const bench::Copy copy(QString::fromLocal8Bit(argv[1]));
        bench::connect(copy.folder());
        const VoucherKind &kind = voucherKind("BP");
        zel::controls::Grid grid;
        fill(grid, kind);
        const VoucherLines lines{grid, "34", "39"};
        BareFile bare(copy.folder() + "/bare");
        const auto through = [&] { bare.writeThrough(); };
        bench::compare(
            "  for comparison, while the log still grows", 3, 25, [&] { saveVoucher(kind, lines, true); },
            through);
        for (syncs = {}; syncs.catalog == 0;)
            saveVoucher(kind, lines, true);
        within &= bench::compare(
            "saving a voucher of three lines", 2.5, 101, [&] { saveVoucher(kind, lines, true); }, through);
        bench::compare(
            "  for comparison, its number given", 3, 101, [&] { saveVoucher(kind, lines, false); }, through);
        bench::compare(
            "  for comparison, against a bare write of 23 pages", 3, 101,
            [&] { saveVoucher(kind, lines, true); }, [&] { bare.writeThrough(23); });
        bench::compare(
            "  for comparison, that bare write against the bare page", 3, 101, [&] { bare.writeThrough(23); },
            through);
        within &= synchronisations([&] { saveVoucher(kind, lines, false); });
        zel::shell::gCon.Close();
    }
    return within ? 0 : 1;
}
