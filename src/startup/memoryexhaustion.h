// What happens when there is no memory left: the person is told, and the process ends.
#pragma once

/// From now on; the platform is installed.
void RInstallMemoryHandler();
/// Before the platform goes.
void RRemoveMemoryHandler();
