#pragma once

#include "platform/controls/grid_model.h"

#include <QHeaderView>

namespace zel::controls {

/// A header of a grid: as the view does, it asks how many rows are there now.
class GridHeader : public QHeaderView {
public:
    using QHeaderView::QHeaderView;
    void reset() override {
        const GridModel::ForView view(model());
        QHeaderView::reset();
    }
    void doItemsLayout() override {
        const GridModel::ForView view(model());
        QHeaderView::doItemsLayout();
    }

protected:
    bool event(QEvent *event) override {
        const GridModel::ForView view(model());
        return QHeaderView::event(event);
    }
    bool viewportEvent(QEvent *event) override {
        const GridModel::ForView view(model());
        return QHeaderView::viewportEvent(event);
    }
};

} // namespace zel::controls
