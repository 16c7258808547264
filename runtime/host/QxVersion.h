#pragma once

/// A number that none had before, of anything that has versions. In any thread.
[[nodiscard]] unsigned long QxNextVersion();
