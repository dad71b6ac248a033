// Draws a row from its views: frames, texts, images, mirrored where the window reads from right to left.
#pragma once

#include <QPainter>
#include <QWidget>

#include "apps/corvane-today/RowContent.h"
#include "apps/corvane-today/WidgetLook.h"

namespace corvane {

/// What became of a row's task a moment ago, while it still stands there.
enum class RowAct { kNone, kCompleted, kMovedToTomorrow };

struct RowState {
    RowAct act = RowAct::kNone;
    bool isHovered = false;
    bool hasFocus = false;
    double rightInset = 0;  ///< pixels at the far end that belong to something else
};

void drawRow(QPainter& painter, const QWidget& row, const RowContent& content, const RowState& state,
             const WidgetLook& look);

/// Whether title or notes do not fit into the row.
bool isRowCut(const RowContent& content, const WidgetLook& look);

/// The outline that marks the widget with the keyboard focus.
void drawFocusFrame(QPainter& painter, const QRectF& place, const WidgetLook& look);

}  // namespace corvane
