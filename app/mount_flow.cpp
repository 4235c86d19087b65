#include "app/mount_flow.h"

#include <optional>
#include <utility>

#include "app/check_formatted.h"
#include "app/monitor_control.h"
#include "app/show_operation_error.h"
#include "devhost/device_host_api.h"
#include "res/resource.h"
#include "services/shell.h"
#include "system/wipe.h"

namespace {

// Holds the dialog's request for the flow's whole run and wipes its password at the end,
// whichever way the flow ends.
class CRequestHolder {
 public:
  explicit CRequestHolder(std::optional<MountRequest> request) : request_(std::move(request)) {}
  ~CRequestHolder()
  {
    if (request_) WipeText(request_->password);
  }
  CRequestHolder(const CRequestHolder&) = delete;
  CRequestHolder& operator=(const CRequestHolder&) = delete;

  const std::optional<MountRequest>& Request() const { return request_; }

 private:
  std::optional<MountRequest> request_;
};

void AfterMount(WindowRef owner, const MountRequest& request, RecentImageList& recentImages)
{
  AddRecentImage(&recentImages, request.imagePath.c_str());
  StartMonitor(owner);
  const std::u16string drive = request.mountPoint + u"\\";
  const bool mayOpen =
      CheckFormatted(owner, request.mountPoint.empty() ? u'\0' : request.mountPoint[0]);
  ShellLookAt(drive);
  if (mayOpen) ShellOpen(owner, drive);
}

}  // namespace

void MountFlow(WindowRef owner, const std::u16string& initialPath, CMountRequestSource& dialog,
               RecentImageList& recentImages)
{
  const CRequestHolder holder(dialog.Ask(owner, initialPath));
  if (!holder.Request()) return;
  const MountRequest& request = *holder.Request();
  const uint32_t flags = MountFlagsOf(request);
  for (;;) {
    const StatusCode status = CurrentDeviceHost().MountWithPassword(
        request.imagePath, request.mountPoint, flags, request.password);
    if (!IsFailure(status)) {
      AfterMount(owner, request, recentImages);
      return;
    }
    if (!ShowOperationError(owner, status, IDS_CANNOT_MOUNT_CAPTION, IDS_CANNOT_MOUNT,
                            request.imagePath)) {
      return;
    }
  }
}
