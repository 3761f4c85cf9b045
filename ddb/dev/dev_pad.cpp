// DEV_PAD_BODY: a pad's I/O standard descriptors.
#include "dev_pad.h"

#include <algorithm>

#include "host/msg.h"

namespace {

// The slot of a descriptor's standard, or null for a standard outside the table.
DEV_IO_STANDARD_DESC** slot_of(DEV_IO_STANDARD_DESC** slots, const DEV_IO_STANDARD_DESC* desc) {
    const int standard = desc ? desc->get_io_standard_enum() : DEV_IO_STANDARD_INVALID;
    return standard >= 0 && standard < DEV_IO_STANDARD_MAX ? &slots[standard] : nullptr;
}

}  // namespace

void DEV_PAD_BODY::add_io_standard(DEV_IO_STANDARD_DESC* desc) {
    // The append comes first: a second descriptor of one standard stays listed.
    m_io_standards.push_back(desc);
    DEV_IO_STANDARD_DESC** slot = slot_of(m_io_standards_by_enum, desc);
    if (!slot) return;
    if (*slot) DEV_INTERNAL_ERROR("Attempt to assign 2nd IO std desc to existing IO std enum on pad");
    *slot = desc;
}

void DEV_PAD_BODY::remove_io_standard(DEV_IO_STANDARD_DESC* desc) {
    auto listed = std::find(m_io_standards.begin(), m_io_standards.end(), desc);
    if (listed != m_io_standards.end()) m_io_standards.erase(listed);
    if (DEV_IO_STANDARD_DESC** slot = slot_of(m_io_standards_by_enum, desc)) *slot = nullptr;
    // A descriptor whose standard changed after it was added holds the slot of the old one.
    std::replace(std::begin(m_io_standards_by_enum), std::end(m_io_standards_by_enum), desc,
                 static_cast<DEV_IO_STANDARD_DESC*>(nullptr));
}

void DEV_PAD_BODY::remove_all_io_standards() {
    m_io_standards.clear();
    std::fill(std::begin(m_io_standards_by_enum), std::end(m_io_standards_by_enum), nullptr);
}

DEV_IO_STANDARD_DESC* DEV_PAD_BODY::get_io_standard_desc_by_enum(DEV_IO_STANDARD_ENUM io_standard_enum) const {
    if (!DEV_ASSERT_TEXT(io_standard_enum > DEV_IO_STANDARD_INVALID && io_standard_enum < DEV_IO_STANDARD_MAX,
                         "io_standard_enum > DEV_IO_STANDARD_INVALID && io_standard_enum < DEV_IO_STANDARD_MAX"))
        return nullptr;
    return m_io_standards_by_enum[io_standard_enum];
}
