#include "CZRB_File.h"

#include "CZRB_Exception.h"
#include "CZRB_Uint8Vector.h"
#include "files/FileStream.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#include <vector>

static_assert(sizeof(off_t) == 8, "64-bit file positions are required");

namespace {

// The longest full path handed out: a work area of 4096 characters with its terminator.
constexpr std::size_t kMaxFullPath = 4095;

// The smallest and the largest first read of ReadToEndFunction: memory grows with the bytes
// that actually come, whatever length the file claims.
constexpr std::size_t kMinimumReadToEnd = 65536;
constexpr std::size_t kLargestFirstReadToEnd = 64 * 1024 * 1024;

// The low 32 bits of a 64-bit length, as the runtime calls take them.
std::size_t Low32(unsigned __int64 length) {
    return static_cast<std::size_t>(length & 0xFFFFFFFFULL);
}

// The line-end bytes of WriteTextLine in their fixed order, for the flags of `lineEnd`; the
// number of bytes.
std::size_t LineEndBytes(unsigned int lineEnd, char (&bytes)[3]) {
    std::size_t count = 0;
    if ((lineEnd & CZRB_File::LINE_END_NUL) != 0) {
        bytes[count++] = '\0';
    }
    if ((lineEnd & CZRB_File::LINE_END_CR) != 0) {
        bytes[count++] = '\r';
    }
    if ((lineEnd & CZRB_File::LINE_END_LF) != 0) {
        bytes[count++] = '\n';
    }
    return count;
}

// The absolute form of `path` against `base` (itself absolute), with empty parts and "."
// dropped and ".." taking back one part (never above the root).
std::string ResolveLexically(const std::string& base, const std::string& path) {
    std::vector<std::string> parts;
    auto addParts = [&parts](const std::string& text) {
        std::size_t start = 0;
        while (start <= text.size()) {
            std::size_t end = text.find('/', start);
            if (end == std::string::npos) {
                end = text.size();
            }
            const std::string part = text.substr(start, end - start);
            if (part == "..") {
                if (!parts.empty()) {
                    parts.pop_back();
                }
            } else if (!part.empty() && part != ".") {
                parts.push_back(part);
            }
            start = end + 1;
        }
    };
    if (path[0] != '/') {
        addParts(base);
    }
    addParts(path);
    std::string result;
    for (const std::string& part : parts) {
        result += '/';
        result += part;
    }
    if (result.empty()) {
        return std::string("/");
    }
    // A trailing separator of the argument is kept, as the path names a folder.
    if (path.back() == '/') {
        result += '/';
    }
    return result;
}

// The current directory, or an empty text when it cannot be told.
std::string CurrentDirectory() {
    std::vector<char> buffer(4096);
    while (getcwd(buffer.data(), buffer.size()) == nullptr) {
        if (errno != ERANGE || buffer.size() >= (1U << 20)) {
            return std::string();
        }
        buffer.resize(buffer.size() * 2);
    }
    return std::string(buffer.data());
}

} // namespace

CZRB_File::CZRB_File() : m_openFlags(0) {}

CZRB_File::CZRB_File(const CZRB_File& other) : CZRB_Object(other), m_openFlags(0) {
    DataCopy(other);
}

CZRB_File& CZRB_File::operator=(const CZRB_File& other) {
    DataCopy(other);
    return *this;
}

CZRB_File::~CZRB_File() {
    if (IsOpen()) {
        m_stream->Flush();
    }
}

void CZRB_File::DataCopy(const CZRB_File& other) {
    if (this == &other) {
        return;
    }
    m_stream = other.m_stream;
    m_openFlags = other.m_openFlags;
    m_name = other.m_name;
}

unsigned int CZRB_File::Open(const CZRB_String& path, unsigned int flags) {
    const bool write = (flags & OPEN_WRITE) != 0;
    const bool read = (flags & OPEN_READ) != 0;
    const bool create = (flags & OPEN_CREATE) != 0;
    const char* mode = nullptr;
    if (write && read) {
        mode = create ? "w+b" : "r+b";
    } else if (write) {
        mode = create ? "wb" : "ab";
    } else if (read) {
        mode = "rb";
    } else {
        return 1;
    }
    std::FILE* file = std::fopen(path.GetStringC(), mode);
    if (file == nullptr) {
        return 1;
    }
    // A folder opens for reading here, but it is not a file: refused like a missing one.
    struct stat status {};
    if (fstat(fileno(file), &status) == 0 && S_ISDIR(status.st_mode)) {
        std::fclose(file);
        return 1;
    }
    std::fseek(file, 0, SEEK_SET);
    if (m_stream && m_stream.use_count() == 1) {
        // Kept as shipped: a stream still open here is not closed (the caller closes first);
        // this object only lets go of it.
        m_stream->Abandon();
    }
    m_stream = std::make_shared<CStream>(file, write);
    m_openFlags = flags;
    m_name = path;
    return 0;
}

unsigned int CZRB_File::Close() {
    const bool closed = m_stream ? m_stream->Close() : true;
    m_openFlags = 0;
    return closed ? 0 : 30;
}

unsigned char CZRB_File::IsOpen() const {
    return m_stream && m_stream->IsOpen() ? 1 : 0;
}

unsigned int CZRB_File::GetOpenFlags() const {
    return m_openFlags;
}

unsigned int CZRB_File::ToStart() {
    return To(0, 1);
}

unsigned int CZRB_File::ToEnd() {
    return To(0, 2);
}

unsigned int CZRB_File::To(unsigned __int64 offset, unsigned int origin) {
    if (!IsOpen()) {
        return 19;
    }
    int whence = SEEK_CUR;
    switch (origin) {
    case 0:
        whence = SEEK_CUR;
        break;
    case 1:
        whence = SEEK_SET;
        break;
    case 2:
        whence = SEEK_END;
        break;
    default:
        return 2;
    }
    // Kept as shipped: the runtime reports failure as -1, so only a positive result counts.
    return m_stream->Seek(static_cast<__int64>(offset), whence) > 0 ? 30 : 0;
}

unsigned __int64 CZRB_File::GetPos() const {
    return IsOpen() ? m_stream->Position() : 0;
}

unsigned __int64 CZRB_File::GetLength() const {
    return IsOpen() ? m_stream->Length() : 0;
}

unsigned char CZRB_File::IsEOF() const {
    return GetPos() >= GetLength() ? 1 : 0;
}

unsigned int CZRB_File::Flush() {
    return IsOpen() && m_stream->Flush() ? 0 : 19;
}

unsigned int CZRB_File::Write(void* data, unsigned __int64 length, unsigned char flush) {
    if (!IsOpen()) {
        return 19;
    }
    const std::size_t count = Low32(length);
    const std::size_t written = count == 0 ? 0 : m_stream->Write(data, count);
    bool done = written == count && (length >> 32) == 0;
    if (flush != 0) {
        done = m_stream->Flush() && done;
    }
    return done ? 0 : 30;
}

unsigned int CZRB_File::Read(void* data, unsigned __int64 length) {
    if (!IsOpen()) {
        return 19;
    }
    const std::size_t count = Low32(length);
    bool failed = false;
    const std::size_t read = count == 0 ? 0 : m_stream->Read(data, count, failed);
    return (read < count || (length >> 32) != 0) ? 30 : 0;
}

bool CZRB_File::ReadToEndFunction(std::string& bytes) {
    if (!IsOpen()) {
        return false;
    }
    // The first read asks for one byte more than the file holds, so that it also meets the end.
    const unsigned __int64 position = GetPos();
    const unsigned __int64 length = GetLength();
    const unsigned __int64 left = length > position ? length - position : 0;
    std::size_t request =
        left < kLargestFirstReadToEnd ? static_cast<std::size_t>(left) + 1 : kLargestFirstReadToEnd;
    request = request < kMinimumReadToEnd ? kMinimumReadToEnd : request;
    while (true) {
        const std::size_t before = bytes.size();
        bytes.resize(before + request);
        bool failed = false;
        const std::size_t read = m_stream->Read(&bytes[before], request, failed);
        bytes.resize(before + read);
        if (failed || read < request) {
            return !failed;
        }
        request = bytes.size(); // more came than the first read asked for: double the room
    }
}

unsigned int CZRB_File::ReadTextLine(char* buffer, unsigned int maxChars) {
    if (!IsOpen() || buffer == nullptr) {
        return 30;
    }
    std::size_t stored = 0;
    const CStream::t_LineEnd end =
        m_stream->ReadLine(maxChars, [buffer, &stored](const char* run, std::size_t count) {
            std::memcpy(buffer + stored, run, count);
            stored += count;
        });
    if (end == CStream::LINE_READ_FAILED || (end == CStream::LINE_STOPPED && stored == 0)) {
        return 30;
    }
    buffer[stored] = '\0';
    return 0;
}

unsigned int CZRB_File::ReadTextLine(CZRB_String& line) {
    if (!m_stream || !m_stream->IsOpen()) {
        return 24;
    }
    if (const char* plain = m_stream->TakePlainLine()) {
        line = plain;
        return 0;
    }
    return m_stream->ReadTextLine(line);
}

unsigned int CZRB_File::WriteText(const char* text) {
    return WriteTextLine(text, 0);
}

unsigned int CZRB_File::WriteText(const CZRB_String& text) {
    return WriteText(text.GetStringC());
}

unsigned int CZRB_File::WriteTextLine(const char* text, unsigned int lineEnd) {
    const std::size_t count = text == nullptr ? 0 : std::char_traits<char>::length(text);
    char ending[3];
    const std::size_t endingCount = LineEndBytes(lineEnd, ending);
    if (count == 0 && endingCount == 0) {
        return 0;
    }
    if (!IsOpen()) {
        return 19;
    }
    // The text, then its line end, reach the system with one flush; a text the runtime did not
    // take completely ends the line there, as each part is written only after the one before.
    bool done = count == 0 || m_stream->Write(text, count) == count;
    if (done && endingCount > 0) {
        done = m_stream->Write(ending, endingCount) == endingCount;
    }
    done = m_stream->Flush() && done;
    return done ? 0 : 30;
}

unsigned int CZRB_File::WriteTextLine(const CZRB_String& text, unsigned int lineEnd) {
    return WriteTextLine(text.GetStringC(), lineEnd);
}

CZRB_String CZRB_File::GetName() const {
    return GetNameFromPath(m_name);
}

CZRB_String CZRB_File::GetPath() const {
    return GetPathFromPath(m_name);
}

CZRB_String CZRB_File::GetFullPath() const {
    return GetFullPathFromPath(m_name);
}

unsigned char CZRB_File::IsPresent(const CZRB_String& path) {
    struct stat status {};
    return stat(path.GetStringC(), &status) == 0 ? 1 : 0;
}

unsigned int CZRB_File::DeleteFile(const CZRB_String& path) {
    return std::remove(path.GetStringC()) != 0 ? 30 : 0;
}

unsigned int CZRB_File::CopyFile(const CZRB_String& destination, const CZRB_String& source,
                                 unsigned int blockSize) {
    CZRB_File input;
    if (input.Open(source, OPEN_READ) != 0) {
        return 1;
    }
    CZRB_File output;
    if (output.Open(destination, OPEN_WRITE | OPEN_CREATE) != 0) {
        input.Close();
        return 1;
    }
    // Both files are closed by their owners' destructors should this throw (code 9).
    CZRB_Uint8Vector block(blockSize);
    unsigned __int64 remaining = input.GetLength();
    while (remaining > 0) {
        const unsigned int chunk =
            remaining < blockSize ? static_cast<unsigned int>(remaining) : blockSize;
        if (input.Read(block.GetBuf(), chunk) != 0 || output.Write(block.GetBuf(), chunk, 0) != 0 ||
            output.Flush() != 0) {
            input.Close();
            output.Close();
            return 30;
        }
        remaining -= chunk;
    }
    input.Close();
    return output.Close() == 0 ? 0 : 30;
}

CZRB_String CZRB_File::GetFullPathFromPath(const CZRB_String& path) {
    const std::string text(path.GetStringC());
    if (text.empty()) {
        return CZRB_String();
    }
    std::string base;
    if (text[0] != '/') {
        base = CurrentDirectory();
        if (base.empty()) {
            return CZRB_String();
        }
    }
    const std::string full = ResolveLexically(base, text);
    if (full.size() > kMaxFullPath) {
        return CZRB_String();
    }
    return CZRB_String(full.c_str());
}

CZRB_String CZRB_File::GetNameFromPath(const CZRB_String& path) {
    const std::string full(GetFullPathFromPath(path).GetStringC());
    const std::size_t slash = full.rfind('\\');
    return CZRB_String(slash == std::string::npos ? full.c_str() : full.c_str() + slash + 1);
}

CZRB_String CZRB_File::GetPathFromPath(const CZRB_String& path) {
    const std::string full(GetFullPathFromPath(path).GetStringC());
    const std::size_t slash = full.rfind('\\');
    if (slash == std::string::npos) {
        return CZRB_String();
    }
    return CZRB_String(full.data(), static_cast<unsigned int>(slash + 1));
}
