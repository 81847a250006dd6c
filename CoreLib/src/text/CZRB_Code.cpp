#include "CZRB_Code.h"

#include <string>
#include <unordered_set>

template class CZRB_Vector<CZRB_Code::CFormatNode>;
template class CZRB_List<CZRB_Code::CFormatNode>;

namespace {

const unsigned int kResultOk = 0;
const unsigned int kResultSyntaxError = 11;
const char kFieldOpen = '<';
const char kFieldClose = '>';

// Frees the payload a node of the given type owns; nodes of other types own nothing.
void FreePayload(const CZRB_Code::CFormatNode& node) {
    if (node.type == CZRB_Code::CFormatNode::TYPE_TEXT) {
        delete static_cast<CZRB_String*>(node.payload);
    } else if (node.type == CZRB_Code::CFormatNode::TYPE_FIELD) {
        delete static_cast<unsigned int*>(node.payload);
    }
}

// A node like `node` with a payload of its own.
CZRB_Code::CFormatNode ClonePayload(const CZRB_Code::CFormatNode& node) {
    if (node.type == CZRB_Code::CFormatNode::TYPE_TEXT) {
        return CZRB_Code::CFormatNode(node.type,
                                      new CZRB_String(*static_cast<CZRB_String*>(node.payload)));
    }
    if (node.type == CZRB_Code::CFormatNode::TYPE_FIELD) {
        return CZRB_Code::CFormatNode(node.type,
                                      new unsigned int(*static_cast<unsigned int*>(node.payload)));
    }
    return CZRB_Code::CFormatNode(node.type, nullptr);
}

// Frees the payloads of every node of a list being parsed, walking it once with its cursor.
void FreeListPayloads(CZRB_Code::CFormatList& nodes) {
    const unsigned int count = nodes.GetLength();
    if (count != 0) {
        nodes.ToStart();
        for (unsigned int i = 0; i < count; ++i) {
            FreePayload(nodes.Next(1));
        }
    }
    nodes.DeleteAll();
}

} // namespace

// --- CFormatNode ---

CZRB_Code::CFormatNode::CFormatNode() : type(TYPE_NONE), payload(nullptr) {}

CZRB_Code::CFormatNode::CFormatNode(unsigned int nodeType, void* nodePayload)
    : type(nodeType), payload(nodePayload) {}

CZRB_Code::CFormatNode::CFormatNode(const CFormatNode& other)
    : CZRB_Object(other), type(TYPE_NONE), payload(nullptr) {
    DataCopy(other);
}

CZRB_Code::CFormatNode::CFormatNode(CFormatNode&& other) noexcept
    : CZRB_Object(other), type(TYPE_NONE), payload(nullptr) {
    DataCopy(other);
}

CZRB_Code::CFormatNode& CZRB_Code::CFormatNode::operator=(const CFormatNode& other) {
    DataCopy(other);
    return *this;
}

CZRB_Code::CFormatNode& CZRB_Code::CFormatNode::operator=(CFormatNode&& other) noexcept {
    DataCopy(other);
    return *this;
}

CZRB_Code::CFormatNode::~CFormatNode() = default;

unsigned char CZRB_Code::CFormatNode::operator==(const CFormatNode&) const {
    return 0;
}

unsigned char CZRB_Code::CFormatNode::operator!=(const CFormatNode&) const {
    return 0;
}

void CZRB_Code::CFormatNode::DataCopy(const CFormatNode& other) {
    type = other.type;
    payload = other.payload;
}

// --- CFormatList, CFormatVector ---

CZRB_Code::CFormatList::~CFormatList() = default;
CZRB_Code::CFormatVector::~CFormatVector() = default;

// --- CZRB_Code ---

CZRB_Code::CZRB_Code() : m_pFormat(new CFormatVector()) {}

CZRB_Code::CZRB_Code(const CZRB_String& text) : m_pFormat(new CFormatVector()) {
    Format(text);
}

CZRB_Code::CZRB_Code(const CZRB_Code& other) : CZRB_Object(other), m_pFormat(new CFormatVector()) {
    DataCopy(other);
}

CZRB_Code& CZRB_Code::operator=(const CZRB_Code& other) {
    DataCopy(other);
    return *this;
}

CZRB_Code::~CZRB_Code() {
    ClearFormat();
    delete m_pFormat;
}

void CZRB_Code::DataCopy(const CZRB_Code& other) {
    if (&other == this) {
        return;
    }
    ClearFormat();
    // Each code owns its payloads, so the copy gets payloads of its own.
    const unsigned int count = other.m_pFormat->GetLength();
    if (count != 0) {
        m_pFormat->Create(count);
        for (unsigned int i = 0; i < count; ++i) {
            (*m_pFormat)[i] = ClonePayload((*other.m_pFormat)[i]);
        }
    }
    m_Names = other.m_Names;
    m_Values = other.m_Values;
}

void CZRB_Code::ClearFormat() {
    for (unsigned int i = 0; i < m_pFormat->GetLength(); ++i) {
        FreePayload((*m_pFormat)[i]);
    }
    m_pFormat->DeleteAll();
    m_Names.DeleteAll();
    m_Values.DeleteAll();
}

unsigned int CZRB_Code::FindName(const CZRB_String& name) const {
    const unsigned int count = m_Names.GetLength();
    for (unsigned int i = 0; i < count; ++i) {
        if (m_Names[i] == name) {
            return i;
        }
    }
    return count;
}

unsigned int CZRB_Code::Format(const CZRB_String& text) {
    ClearFormat();

    CZRB_StringVector names;
    // The names collected so far as the string comparison sees them (up to a zero byte), so
    // that a duplicate is found without scanning every earlier name.
    std::unordered_set<std::string> seen;
    CFormatList nodes;
    CZRB_String work;
    unsigned int fieldCount = 0;
    bool inField = false;
    bool justClosed = false;
    bool syntaxError = false;

    for (unsigned int i = 0; i < text.GetLength() && !syntaxError; ++i) {
        const char c = text.GetChar(i);
        if (!inField) {
            if (c != kFieldOpen) {
                work += c;
                justClosed = false;
            } else if (justClosed) {
                syntaxError = true; // two fields without literal text between them
            } else {
                if (work.GetLength() != 0) {
                    nodes.AppendItem(CFormatNode(CFormatNode::TYPE_TEXT, new CZRB_String(work)));
                    work = "";
                }
                inField = true;
            }
        } else if (c != kFieldClose) {
            work += c;
        } else {
            if (work.GetLength() == 0 || !seen.insert(work.GetStringC()).second) {
                syntaxError = true; // empty or duplicate name
            } else {
                names.AppendItem(work);
                nodes.AppendItem(
                    CFormatNode(CFormatNode::TYPE_FIELD, new unsigned int(fieldCount)));
                ++fieldCount;
                work = "";
                inField = false;
                justClosed = true;
            }
        }
    }

    if (syntaxError) {
        FreeListPayloads(nodes);
        ClearFormat();
        return kResultSyntaxError;
    }
    // Literal text after the last field and an unterminated field name are dropped.
    if (nodes.GetLength() == 0) {
        return kResultOk;
    }
    m_pFormat->CZRB_Vector<CFormatNode>::operator=(nodes);
    m_Names = names;
    if (names.GetLength() != 0) {
        m_Values.Create(names.GetLength(), CZRB_String());
    }
    return kResultOk;
}

CZRB_String CZRB_Code::GetString() const {
    CZRB_String text;
    for (unsigned int i = 0; i < m_pFormat->GetLength(); ++i) {
        const CFormatNode& node = (*m_pFormat)[i];
        if (node.type == CFormatNode::TYPE_TEXT) {
            text += *static_cast<const CZRB_String*>(node.payload);
        } else if (node.type == CFormatNode::TYPE_FIELD) {
            text += m_Values[*static_cast<const unsigned int*>(node.payload)];
        }
    }
    return text;
}

CZRB_Code& CZRB_Code::SetField(const CZRB_String& name, const CZRB_String& value) {
    const unsigned int index = FindName(name);
    if (index < m_Names.GetLength()) {
        m_Values[index] = value;
    }
    return *this;
}

CZRB_String CZRB_Code::GetField(const CZRB_String& name) const {
    const unsigned int index = FindName(name);
    if (index < m_Names.GetLength()) {
        return m_Values[index];
    }
    return CZRB_String("(*this)");
}

CZRB_Code& CZRB_Code::Set(const CZRB_String& text) {
    // The text still to match is work[rest ...]; each literal is searched from there.
    const CZRB_String work(text);
    unsigned int rest = 0;
    bool pending = false;
    unsigned int field = 0;
    for (unsigned int i = 0; i < m_pFormat->GetLength(); ++i) {
        const CFormatNode& node = (*m_pFormat)[i];
        if (node.type == CFormatNode::TYPE_FIELD) {
            pending = true;
        } else if (node.type == CFormatNode::TYPE_TEXT) {
            const CZRB_String& literal = *static_cast<const CZRB_String*>(node.payload);
            unsigned int position = 0;
            if (work.FindFromBegin(literal, &position, 1, rest) == 0) {
                return *this; // a missing literal stops the matching
            }
            if (pending) {
                m_Values[field] = work.Mid(rest, position - rest);
                ++field;
                pending = false;
            }
            rest = position + literal.GetLength();
        }
    }
    if (pending && rest < work.GetLength()) {
        m_Values[field] = work.RightFromPos(rest);
    }
    return *this;
}

CZRB_Code& CZRB_Code::Set(const CZRB_Code& other) {
    for (unsigned int i = 0; i < other.m_Names.GetLength(); ++i) {
        const unsigned int index = FindName(other.m_Names[i]);
        if (index < m_Names.GetLength()) {
            m_Values[index] = other.m_Values[i];
        }
    }
    return *this;
}
