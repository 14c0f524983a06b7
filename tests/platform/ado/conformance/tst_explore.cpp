#include "sample_catalog.h"
#include <cstdio>
#include <iostream>
int main() {
    SampleCatalog c;
    std::string line;
    while (std::getline(std::cin, line)) {
        if (line.empty()) continue;
        c.begin();
        Answer a = c.run(zel::Sql::trusted(line));
        std::printf("> %s\n", line.c_str());
        if (!a.ok()) std::printf("  ! %d %s\n", *a.error, qPrintable(a.description.section(u'\n',0,0)));
        else if (a.rows) { QStringList l = lines(*a.rows); std::printf("  %d rows: %s\n", int(l.size()), qPrintable(l.mid(0,6).join(QStringLiteral(" ; ")))); }
        else std::printf("  ok\n");
        c.undo();
    }
}
