// The window that owns a prompt or dialog, as the portable code sees it: the system's window
// handle, carried without being looked into. Null means no owner.
#pragma once

using WindowRef = void*;
