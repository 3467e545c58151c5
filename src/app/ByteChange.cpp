#include "app/ByteChange.h"

ByteChange::ByteChange(Replace replace, qsizetype offset, QByteArray before, QByteArray after)
    : m_replace(std::move(replace)),
      m_offset(offset),
      m_before(std::move(before)),
      m_after(std::move(after)) {}

void ByteChange::undo() {
    m_replace(m_offset, m_after.size(), m_before);
    m_made = false;
}

// The stack calls this for a command that is new, too.
void ByteChange::redo() {
    if (!m_made)
        m_replace(m_offset, m_before.size(), m_after);
    m_made = true;
}
