#pragma once

/// The schema of the command file: JSON text in the dialect of `jsv`, with Windows line ends, in read-only
/// memory.
const char* commandFileSchema();
