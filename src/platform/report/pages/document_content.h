#pragma once

#include "platform/report/pages/document.h"
#include "platform/report/pages/paginator.h"

namespace zel::report {

/// What a document keeps: the rows, and where its pages begin.
struct Document::Private {
    Private(const Request &request, Source &source, std::shared_ptr<const TextMetrics> textMetrics);

    struct Start {
        int copy;
        Cursor cursor;
    };

    std::shared_ptr<const TextMetrics> metrics;
    Run run;
    std::vector<std::unique_ptr<Pass>> passes; ///< by copy
    std::vector<Start> starts;
    std::vector<int> firstPages; ///< by copy, and behind them the page count
};

} // namespace zel::report
