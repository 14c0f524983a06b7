// The text of Server.txt.

#include "fuzzing.h"

#include "shell/server_file.h"

#include <sys/mman.h>
#include <unistd.h>

using namespace zel;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const int file = ::memfd_create("Server.txt", 0);
    if (::ftruncate(file, 0) != 0 || ::pwrite(file, data, size, 0) != ssize_t(size))
        std::abort();
    (void)fuzz::accepted([&] {
        const QString item = shell::firstItem(QStringLiteral("/proc/self/fd/%1").arg(file));
        const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
        const bool quoted = text.contains(u'"' + item);
        const bool parted = item.contains(u',') || item.contains(u'\n') || item.contains(u'\r');
        if (!text.contains(item) || (!quoted && (item != item.trimmed() || parted)))
            fuzz::broken("an item is a part of the file that nothing parts further", item.toStdString());
    });
    return 0;
}
