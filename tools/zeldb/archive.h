#pragma once

#include "source.h"
#include "table_sum.h"

#include <QString>

#include <memory>
#include <string>

namespace zel::tool {

/// A backup is a file of Zstandard frames: one that is skipped, with the words "ZEL backup 1"; a compressed
/// one; one that is skipped, with the BLAKE2b sum of all bytes before it. The compressed one, which any tool
/// of the format shows (zstd -dc), is text: a line of JSON tells the version, the engine, when it was taken,
/// the tables with the statements that make them and the number of their rows, the procedures and the logins;
/// then the rows of each table in that order, a line each (appendRow), and behind them a line "\.", the
/// number of rows and their TableSum, parted by tabs.
class ArchiveWriter {
public:
    /// The file is made, or what a killed run left is written anew; its owner alone may read it.
    explicit ArchiveWriter(const QString &path);
    ~ArchiveWriter();

    void begin(const ado::Inventory &inventory);
    void row(ado::Cells cells);
    void endTable();
    /// All of it is on the disk after this.
    void finish();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// Whether an ArchiveWriter is at work on the file; what is not is a killed one's.
[[nodiscard]] bool isBeingWritten(const QString &path);

/// Reads a backup that is whole: what is cut off or altered is refused before anything of it is used.
class ArchiveReader final : public Source {
public:
    explicit ArchiveReader(const QString &path);
    ~ArchiveReader() override;

    [[nodiscard]] const ado::Inventory &inventory() const override;
    /// To be called for each table in the order of the inventory.
    void readRows(const ado::TableDefinition &table, const std::function<void(ado::Cells)> &told) override;
    [[nodiscard]] QString taken() const; ///< when, as the person reads it

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace zel::tool
