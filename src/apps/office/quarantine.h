// Keeping an office that shows foreign workbooks off the network.
#pragma once

namespace korvane::office {

// From now on no thread of this process, nor any process that it starts, can
// open a network socket: whatever a workbook tries to reach fails. Does nothing
// where the system has no means for it; the workbook is then still opened
// without updating links or running macros.
void CutOffNetwork() noexcept;

}  // namespace korvane::office
