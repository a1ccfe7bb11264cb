#include <string_view>

#include "platform/gfx/device_context.h"
#include "platform/gfx/turn.h"

namespace {

using gfx::ContextOf;
using gfx::DeviceContext;

bool Readable(const char* text, int length) {
  return length == 0 || (length > 0 && text != nullptr);
}

std::string_view View(const char* text, int length) {
  return length == 0 ? std::string_view()
                     : std::string_view(text, static_cast<std::size_t>(length));
}

// The mapping that turns an engine's measures into logical units.
gfx::Mapping MeasureMapping(const DeviceContext& context, const gfx::TextEngine& engine) {
  return engine.MeasuresLogicalUnits() ? gfx::Mapping{} : context.state.mapping;
}

SIZE LogicalExtent(const DeviceContext& context, std::string_view text) {
  gfx::TextEngine& engine = context.Target().Text();
  const gfx::Mapping mapping = MeasureMapping(context, engine);
  const SIZE extent = engine.Extent(context.CurrentFont(), text);
  return {mapping.LengthToLogical(extent.cx), mapping.LengthToLogical(extent.cy)};
}

// The TA_ values drivers know: bits that mean nothing are dropped, a lone half of a two-bit value
// counts as its absence.
UINT DriverAlign(UINT align) {
  UINT horizontal = align & TA_CENTER;
  if (horizontal != TA_CENTER) horizontal &= TA_RIGHT;
  UINT vertical = align & TA_BASELINE;
  if (vertical != TA_BASELINE) vertical &= TA_BOTTOM;
  return horizontal | vertical;
}

void UpdatePosition(DeviceContext& context, std::string_view text, UINT align) {
  if ((align & TA_CENTER) == TA_CENTER) return;
  const std::int64_t width = LogicalExtent(context, text).cx;
  gfx::ContextState& state = context.state;
  const bool yUp = state.mapping.mode == MM_TWIPS;
  const LONG tenths = state.font->font.lfEscapement % 3600;
  state.position = gfx::MovePoint(
      state.position,
      gfx::Turn(yUp ? -tenths : tenths).Apply((align & TA_RIGHT) != 0 ? -width : width, 0));
}

}  // namespace

BOOL TextOutA(HDC hdc, int x, int y, const char* text, int length) {
  DeviceContext* context = ContextOf(hdc);
  if (context == nullptr || !Readable(text, length)) return FALSE;
  if (length == 0) return TRUE;
  const gfx::ContextState& state = context->state;
  const bool updates = (state.align & TA_UPDATECP) != 0;
  const UINT align = DriverAlign(state.align);
  const gfx::Font font = context->CurrentFont();
  const POINT at = state.mapping.ToDevice(updates ? state.position : POINT{x, y});
  const gfx::TextRun run{
      at,           View(text, length),       font, gfx::Plain(state.textColor), align,
      state.bkMode, gfx::Plain(state.bkColor)};
  context->Target().TextOut(run, context->CurrentClip());
  if (updates) UpdatePosition(*context, run.text, align);
  return context->Target().Ok() ? TRUE : FALSE;
}

BOOL GetTextExtentPoint32A(HDC hdc, const char* text, int length, SIZE* size) {
  const DeviceContext* context = ContextOf(hdc);
  if (context == nullptr || size == nullptr || !Readable(text, length)) return FALSE;
  *size = LogicalExtent(*context, View(text, length));
  return TRUE;
}

BOOL GetTextMetricsA(HDC hdc, TEXTMETRICA* metrics) {
  const DeviceContext* context = ContextOf(hdc);
  if (context == nullptr || metrics == nullptr) return FALSE;
  gfx::TextEngine& engine = context->Target().Text();
  const gfx::Mapping mapping = MeasureMapping(*context, engine);
  *metrics = engine.Metrics(context->CurrentFont());
  for (LONG TEXTMETRICA::*field :
       {&TEXTMETRICA::tmHeight, &TEXTMETRICA::tmAscent, &TEXTMETRICA::tmInternalLeading,
        &TEXTMETRICA::tmExternalLeading, &TEXTMETRICA::tmAveCharWidth, &TEXTMETRICA::tmMaxCharWidth,
        &TEXTMETRICA::tmOverhang}) {
    metrics->*field = mapping.LengthToLogical(metrics->*field);
  }
  // Not scaled by itself: ascent and descent make up the height exactly.
  metrics->tmDescent = gfx::Saturate(std::int64_t{metrics->tmHeight} - metrics->tmAscent);
  return TRUE;
}
