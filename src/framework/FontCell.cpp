#include "framework/FontCell.h"

#include "platform/drawing/ClientDC.h"

FontCell MeasureFontCell(CWnd& window, CFont* font) {
    CClientDC dc(&window);
    return MeasureFontCell(dc, font);
}

FontCell MeasureFontCell(CDC& dc, CFont* font) {
    CFont* const previous = dc.SelectObject(font);
    TEXTMETRIC metrics;
    dc.GetTextMetrics(&metrics);
    dc.SelectObject(previous);
    return {metrics.tmAveCharWidth, metrics.tmHeight + metrics.tmExternalLeading};
}
