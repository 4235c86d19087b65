#include "app/dismount_prompts.h"

#include "res/resource.h"

Prompt DiskInUsePrompt(std::u16string_view mountPoint)
{
  return MakePrompt(IDS_DISK_IN_USE, IDS_WARNING_CAPTION, kPromptQuestion, {mountPoint});
}

Prompt DisksInUsePrompt()
{
  return MakePrompt(IDS_DISKS_IN_USE, IDS_WARNING_CAPTION, kPromptQuestion, {});
}

Prompt DismountFailure(StatusCode status)
{
  return MakePrompt(IDS_OPERATION_FAILED, IDS_CANNOT_DISMOUNT_CAPTION, kPromptError, {status});
}
