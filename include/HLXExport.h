#ifndef HLX_EXPORT_H
#define HLX_EXPORT_H

/// Marks what the shared library exports and what applications and library must share (interface classes).
#define HLX_API __attribute__((visibility("default")))

#endif
