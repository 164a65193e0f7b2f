#pragma once

/// Bytes that the program has asked for with operator new since its start.
long long AllocatedBytes();
