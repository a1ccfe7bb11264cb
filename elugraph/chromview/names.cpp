#include <algorithm>

#include "elugraph/chromview/channel_pass.h"
#include "elugraph/chromview/chrom_render.h"
#include "elugraph/chromview/host_text.h"
#include "elugraph/chromview/name_stacks.h"
#include "elugraph/chromview/text_join.h"
#include "platform/kernel/kernel.h"

namespace {

constexpr std::size_t kComparedCharacters = 8;  // all that a name field holds
constexpr double kLowestNameY = 16382;
constexpr LONG kUnmeasuredHeight = 8;

bool SameStart(const char* a, const char* b) {
  for (std::size_t i = 0; i < kComparedCharacters; ++i) {
    if (a[i] != b[i]) return false;
    if (a[i] == '\0') break;
  }
  return true;
}

// The name, with the description in parentheses where that says something else.
std::string NameOf(const TChannel& channel) {
  const FixedText name(channel.name);
  const char* description = channel.description;
  const bool described = IsBadStringPtrA(description, kComparedCharacters) == FALSE &&
                         *description != '\0' && !SameStart(description, name.c_str());
  const char* const all[] = {name.c_str(), "(", description, ")", nullptr};
  const char* const nameOnly[] = {name.c_str(), nullptr};
  return JoinTexts(described ? all : nameOnly);
}

LONG TextHeight(HDC hdc, const std::string& text) {
  SIZE extent{0, 0};
  const BOOL measured =
      GetTextExtentPoint32A(hdc, text.c_str(), static_cast<int>(text.size()), &extent);
  return measured ? extent.cy : kUnmeasuredHeight;
}

}  // namespace

// In the list, at the top left; or at the start of the trace where there is room.
void TChromRender::DrawName(const ChannelPass& pass, int drawn, NameStacks& stacks, HDC hdc) {
  SelectObject(hdc, font);
  SetTextAlign(hdc, TA_LEFT | TA_TOP);
  const std::string text = NameOf(*pass.channel);
  const int length = static_cast<int>(text.size());
  if ((View()->flags & THoldWindow::kNameList) != 0) {
    TextOutA(hdc, pass.x0 + charWidth, (drawn + 1) * charHeight + charHeight / 3, text.c_str(),
             length);
    return;
  }
  const int start = std::min(TruncToInt32(pass.startIndex + 1), pass.count - 1);
  const double y = pass.yval.Value(start);
  if (!(y > 0 && y < kLowestNameY)) return;
  const int gap = charHeight / 3 / 2;
  if (pass.channelIndex < chrom->splitIndex()) {
    if (!(gap + y > stacks.lowestBottom)) return;
    stacks.lowestBottom = TruncToInt32(gap + y + TextHeight(hdc, text));
  } else {
    if (!(y - gap < stacks.highestTop)) return;
    stacks.highestTop = TruncToInt32(y - gap - TextHeight(hdc, text));
  }
  TextOutA(hdc, pass.x0 + charWidth / 2, TruncToInt32(y) + gap, text.c_str(), length);
}
