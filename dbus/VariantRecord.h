/// Plain records as D-Bus variants: a "v" that holds the record's bytes as an "ay".
#pragma once

#include <glib.h>

#include <cstddef>

/// Copies `size` bytes of `record`. @return a floating "v"
GVariant* build_variant_data(const void* record, std::size_t size);

/// Copies the bytes inside `variant` to `record`, as many as there are: the caller makes sure that they fit.
void extract_variant_data(void* record, GVariant* variant);

/// Number of bytes that extract_variant_data() would copy; -1 when `variant` is no "v" that holds an "ay".
gssize variant_data_size(GVariant* variant);
