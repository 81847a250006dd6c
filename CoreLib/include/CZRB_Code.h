/// @file
/// CZRB_Code: a structured text code built from a template of literal text and named fields,
/// with one string value per field.
#ifndef CZRB_CODE_H
#define CZRB_CODE_H

#include "CZRB_List.h"
#include "CZRB_Object.h"
#include "CZRB_String.h"
#include "CZRB_Vector.h"
#include "LZRB_NamedContainer.h"

/// A structured text code built from a template of literal text and named fields, with one
/// string value per field.
///
/// Template syntax: literal text with fields written as `<name>`, for example "ID<n>" or
/// "<a>-<b>". Two fields need literal text between them; names are unique (case-sensitive)
/// and not empty. Literal text after the last field and an unterminated field are dropped.
class LZRB_API CZRB_Code : public CZRB_Object {
public:
    /// One node of a template: a node type and a reference to its payload. The code that
    /// holds a node owns its payload; the node itself never allocates or frees it.
    class LZRB_API CFormatNode : public CZRB_Object {
    public:
        /// @name Node types
        /// Rendering ignores any type other than TYPE_FIELD and TYPE_TEXT.
        /// @{
        static const unsigned int TYPE_FIELD = 0; ///< payload: heap unsigned int field index
        static const unsigned int TYPE_TEXT = 1;  ///< payload: heap CZRB_String literal text
        static const unsigned int TYPE_NONE = 2;  ///< no payload
        /// @}

        /// Type TYPE_NONE, no payload.
        CFormatNode();
        /// Stores both words as given.
        CFormatNode(unsigned int nodeType, void* nodePayload);
        /// Copies both words (the payload reference, not the payload).
        CFormatNode(const CFormatNode& other);
        /// Copies both words (the payload reference, not the payload).
        CFormatNode(CFormatNode&& other) noexcept;
        /// Copies both words (the payload reference, not the payload); returns *this.
        CFormatNode& operator=(const CFormatNode& other);
        /// Copies both words (the payload reference, not the payload); returns *this.
        CFormatNode& operator=(CFormatNode&& other) noexcept;
        /// Leaves the payload alone: the code that holds the node frees it.
        ~CFormatNode() override;
        /// Always 0: nodes never compare equal, so searches for a node always fail (by design).
        unsigned char operator==(const CFormatNode& other) const;
        /// Always 0: nodes never compare unequal either (by design).
        unsigned char operator!=(const CFormatNode& other) const;

        unsigned int type; ///< TYPE_FIELD, TYPE_TEXT or another node type
        void* payload;     ///< the payload of that type (none for TYPE_NONE)

    protected:
        /// Copies both words.
        void DataCopy(const CFormatNode& other);
    };

    /// A list of nodes, used while a template is parsed (defined below the class).
    class CFormatList;
    /// A vector of nodes: the template of a code (defined below the class).
    class CFormatVector;

    /// No template, no fields.
    CZRB_Code();
    /// Runs Format(text); its result is not reported.
    CZRB_Code(const CZRB_String& text);
    /// Copies the template (with payloads of its own), the names and the values.
    CZRB_Code(const CZRB_Code& other);
    /// Copies the template (with payloads of its own), the names and the values; returns *this.
    CZRB_Code& operator=(const CZRB_Code& other);
    /// Frees the template's payloads.
    ~CZRB_Code() override;

    /// Replaces the template by `text`: 0 on success (also for text without any field), 11 on
    /// a syntax error ("<>", a duplicate name, "<a><b>"), which leaves the code without
    /// template. The old template is gone in both cases; every value starts empty.
    unsigned int Format(const CZRB_String& text);
    /// The literal texts and the field values in template order; "" without template.
    CZRB_String GetString() const;
    /// Gives the first field named `name` the value; an unknown name changes nothing. Throws
    /// code 5 (object: the values) when names and values disagree. Returns *this.
    CZRB_Code& SetField(const CZRB_String& name, const CZRB_String& value);
    /// A copy of the first field's value named `name`; the text "(*this)" for an unknown name
    /// (by design). Throws code 5 (object: the values) when names and values disagree.
    CZRB_String GetField(const CZRB_String& name) const;
    /// Fills the values by matching `text` against the template; returns *this. Each literal
    /// is searched case-sensitively anywhere in the rest of the text: text before a leading
    /// literal is skipped, a literal not found stops the matching (values assigned so far
    /// stay), and a final field takes the whole non-empty remainder, including text that the
    /// template dropped. Kept as shipped.
    CZRB_Code& Set(const CZRB_String& text);
    /// Takes over `other`'s values of the fields that both codes name; other names are
    /// ignored. Throws code 5 when names and values disagree on either side. Returns *this.
    CZRB_Code& Set(const CZRB_Code& other);

    /// The field names in template order.
    const CZRB_StringVector& GetNames() const { return m_Names; }
    /// The field values, one per name.
    const CZRB_StringVector& GetValues() const { return m_Values; }

protected:
    /// Copies the template (with payloads of its own), the names and the values.
    void DataCopy(const CZRB_Code& other);

private:
    /// Frees every payload, then empties the names, the values and the template.
    void ClearFormat();
    /// Index of the first field named `name`, or the number of names when there is none.
    unsigned int FindName(const CZRB_String& name) const;

    CZRB_StringVector m_Names;
    CZRB_StringVector m_Values;
    /// Always allocated. Held through a pointer so that the node containers, whose library
    /// instantiations are declared after this class, are complete only there.
    CFormatVector* m_pFormat;
};

extern template class LZRB_API CZRB_Vector<CZRB_Code::CFormatNode>;
extern template class LZRB_API CZRB_List<CZRB_Code::CFormatNode>;

/// A list of nodes, used while a template is parsed. Copies take the payload references only;
/// freeing the list frees the nodes, not their payloads.
class LZRB_API CZRB_Code::CFormatList : public CZRB_List<CZRB_Code::CFormatNode> {
    LZRB_NAMED_CONTAINER_MEMBERS(CFormatList, CZRB_List<CZRB_Code::CFormatNode>)

public:
    /// Copies every node (payload references only); the source keeps its nodes.
    CFormatList(CFormatList&& other) : CZRB_List<CZRB_Code::CFormatNode>(other) {}
};

/// A vector of nodes: the template of a code. Copies take the payload references only;
/// freeing the vector frees the nodes, not their payloads.
class LZRB_API CZRB_Code::CFormatVector : public CZRB_Vector<CZRB_Code::CFormatNode> {
    LZRB_NAMED_CONTAINER_MEMBERS(CFormatVector, CZRB_Vector<CZRB_Code::CFormatNode>)

public:
    /// Copies every node (payload references only); the source keeps its nodes.
    CFormatVector(CFormatVector&& other) : CZRB_Vector<CZRB_Code::CFormatNode>(other) {}
};

#endif
