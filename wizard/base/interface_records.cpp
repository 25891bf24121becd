#include "wizard/base/interface_records.h"

#include <algorithm>

namespace {

std::size_t length_of(const char* record, const InterfaceRecordLayout& layout) {
    if (!layout.address_has_length) return layout.record_size;
    const std::size_t address_length = static_cast<unsigned char>(record[layout.name_size]);
    return std::max(layout.record_size, layout.name_size + address_length);
}

}  // namespace

std::vector<std::size_t> interface_record_offsets(const char* records, std::size_t length,
                                                  const InterfaceRecordLayout& layout) {
    std::vector<std::size_t> offsets;
    std::size_t at = 0;
    while (at + layout.record_size <= length) {
        offsets.push_back(at);
        at += length_of(records + at, layout);
    }
    return offsets;
}
