#include "wizard/completion_summary.h"

#include "app/display_text.h"
#include "res/format_text.h"
#include "res/resource.h"
#include "res/texts.h"

namespace {

std::u16string YesOrNo(uint32_t value)
{
  return LoadText(value != 0 ? IDS_YES : IDS_NO);
}

}  // namespace

std::u16string SummaryAlgorithmText(uint32_t algorithm, uint32_t keyBits)
{
  return FormatText(u"%s-%u", {AlgorithmName(algorithm).value_or(u""), keyBits});
}

CompletionSummary SummarizeRequest(const NewImageRequest& request)
{
  return CompletionSummary{request.path, FormatSizeText(request.capacity, true),
                           SummaryAlgorithmText(request.algorithm, request.keyBits),
                           YesOrNo(request.fixedSize), YesOrNo(request.fatCompatible)};
}
