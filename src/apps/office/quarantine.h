// Keeping an office that shows foreign workbooks off the network.
#pragma once

namespace korvane::office {

// From now on no thread of this process, nor any process that it starts, can
// open a network socket: whatever a workbook tries to reach fails. Throws
// std::runtime_error where the system has no means for it; no workbook must be
// opened then.
void CutOffNetwork();

}  // namespace korvane::office
