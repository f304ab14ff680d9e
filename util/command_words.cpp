#include "util/command_words.h"

#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

/// Walks a line and keeps the one wanted word.
class WordWalk {
 public:
    WordWalk(TextView line, int wanted) : m_line(' ' + Trim(line) + ' '), m_wanted(wanted) {}

    Text FindWord() {
        while (m_position < m_line.size() && m_index <= m_wanted)
            Step();
        if (m_index > m_wanted) return m_word;
        // An unterminated quote has taken in the space added behind the line.
        if (m_index == m_wanted && m_inQuote && !m_word.empty()) return m_word.substr(0, m_word.size() - 1);
        return {};
    }

 private:
    void Step() {
        const char character = m_line[m_position];
        if (character == '"')
            StepQuote();
        else if (character == ' ' && !m_inQuote)
            ++m_index;
        else
            Keep(character);
        ++m_position;
    }

    void StepQuote() {
        if (m_inQuote && m_line[m_position + 1] == '"') {  // the added space follows every quote of the line
            Keep('"');
            ++m_position;
            return;
        }
        m_inQuote = !m_inQuote;
        const char neighbour = m_inQuote ? m_line[m_position - 1] : m_line[m_position + 1];
        if (neighbour != ' ') ++m_index;
    }

    void Keep(char character) {
        if (m_index == m_wanted) m_word += character;
    }

    const Text m_line;
    const int m_wanted;
    std::size_t m_position = 0;
    int m_index = -1;
    bool m_inQuote = false;
    Text m_word;
};

}  // namespace

Text GetParam(TextView line, int index) try { return WordWalk(line, index).FindWord(); } catch (...) {
    HandleError("Util.GetParam");
    return {};
}

Text FirstWord(TextView line) {
    return GetParam(line, 0);
}

Text RestAfterFirstWord(TextView line) {
    const Text trimmed = Trim(line);
    bool inQuote = false;
    for (std::size_t i = 0; i < trimmed.size(); ++i) {
        if (trimmed[i] == '"') {
            inQuote = !inQuote;
            if (inQuote && i > 0 && trimmed[i - 1] != ' ') return trimmed.substr(i);
        } else if (trimmed[i] == ' ' && !inQuote) {
            return trimmed.substr(i + 1);
        }
    }
    return {};
}

}  // namespace rvl
