#include "wizard/completion_summary.h"

#include "app/display_text.h"
#include "res/format_text.h"
#include "res/resource.h"
#include "res/texts.h"

namespace {

constexpr unsigned kAlgorithmNames[] = {IDS_ALGORITHM_AES, IDS_ALGORITHM_BLOWFISH,
                                        IDS_ALGORITHM_CAST};

std::u16string YesOrNo(uint32_t value)
{
  return LoadText(value != 0 ? IDS_YES : IDS_NO);
}

}  // namespace

std::u16string SummaryAlgorithmText(uint32_t algorithm, uint32_t keyBits)
{
  const std::u16string name =
      algorithm < std::size(kAlgorithmNames) ? LoadText(kAlgorithmNames[algorithm]) : u"";
  return FormatText(u"%s-%u", {name, keyBits});
}

CompletionSummary SummarizeRequest(const NewImageRequest& request)
{
  return CompletionSummary{request.path, FormatSizeText(request.capacity, true),
                           SummaryAlgorithmText(request.algorithm, request.keyBits),
                           YesOrNo(request.fixedSize), YesOrNo(request.fatCompatible)};
}
