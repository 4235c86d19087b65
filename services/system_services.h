// The system's own implementation of each service, the default of its slot. The Windows
// build shows and starts the real things; elsewhere each reports that it is not available.
#pragma once

#include "services/file_dialog.h"
#include "services/help.h"
#include "services/message_box.h"
#include "services/process.h"
#include "services/shell.h"

CMessageBoxService& SystemMessageBoxService();
CFileDialogService& SystemFileDialogService();
CShellService& SystemShellService();
CHelpService& SystemHelpService();
CProcessService& SystemProcessService();
