// Report definitions.

#include "fuzzing.h"

#include "platform/report/definition/definition.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray xml(reinterpret_cast<const char *>(data), qsizetype(size));
    (void)zel::fuzz::accepted([&] {
        (void)zel::report::readDefinition(xml, QStringLiteral("fuzzed.rpt"), QStringLiteral("/nowhere"));
    });
    return 0;
}
