#pragma once

/// Lets the program keep up to 16 MiB of freed memory for its next blocks, where by default the C library gives what a
/// thread frees back to the system above 128 KiB, and takes it anew for the next message: an exact copy of an .olm file
/// of 10,000 messages takes more than twice as long then. To be called before a thread starts; does nothing with other libraries.
void keepFreedMemory();
