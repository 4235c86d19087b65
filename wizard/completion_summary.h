// The completion page's summary of the new image: its path, its capacity in the precise
// size text, the cipher as "%s-%u" of its name and key bits ("AES-256"; an id the wizard
// does not offer has no name, "-256"), and "Yes" or "No" for the two storage options.
#pragma once

#include <cstdint>
#include <string>

#include "wizard/new_image_request.h"

struct CompletionSummary {
  std::u16string path;
  std::u16string capacity;
  std::u16string algorithm;
  std::u16string fixedSize;
  std::u16string fatCompatible;
};

CompletionSummary SummarizeRequest(const NewImageRequest& request);

// "%s-%u": the name of `algorithm` (AES, BLOWFISH, CAST; empty for any other id) and the key
// length in bits.
std::u16string SummaryAlgorithmText(uint32_t algorithm, uint32_t keyBits);
