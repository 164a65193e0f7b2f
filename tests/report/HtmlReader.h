#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Keltrix::App::Trial {

/// One element of a document as a test needs it.
struct HtmlElement {
    std::string name;
    std::map<std::string, std::string> attributes;
    std::string text; ///< of the element itself, without that of its children; still escaped
};

/// The number that an attribute is.
inline double NumberOf(const HtmlElement& element, const char* attribute)
{
    return std::stod(element.attributes.at(attribute));
}

/// A strict reader of the HTML that the program writes: every tag closed in order, every attribute quoted, "&" only as the
/// start of a character reference. Whatever departs is an error with its place.
class HtmlReader {
public:
    explicit HtmlReader(std::string_view html) { Read(html); }

    const std::string& Error() const { return m_error; }
    const std::vector<HtmlElement>& Elements() const { return m_elements; }
    std::vector<const HtmlElement*> Named(std::string_view name) const
    {
        std::vector<const HtmlElement*> found;
        for (const HtmlElement& element : m_elements)
            if (element.name == name) found.push_back(&element);
        return found;
    }
    std::vector<const HtmlElement*> OfClass(std::string_view name, std::string_view cls) const
    {
        std::vector<const HtmlElement*> found;
        for (const HtmlElement* element : Named(name)) {
            const auto it = element->attributes.find("class");
            if (it != element->attributes.end() && it->second == cls) found.push_back(element);
        }
        return found;
    }

private:
    void Fail(std::string_view html, std::size_t at, const std::string& what)
    {
        if (m_error.empty()) m_error = what + " near: " + std::string(html.substr(at > 60 ? at - 60 : 0, 160));
    }

    void Read(std::string_view html)
    {
        std::vector<std::size_t> open;
        std::size_t at = 0;
        if (html.starts_with("<!DOCTYPE html>\n")) at = 16;
        while (at < html.size() && m_error.empty()) {
            if (html[at] != '<') {
                const std::size_t end = std::min(html.find('<', at), html.size());
                const std::string_view text = html.substr(at, end - at);
                CheckText(html, at, text);
                if (!open.empty()) m_elements[open.back()].text += text;
                at = end;
                continue;
            }
            const std::size_t end = html.find('>', at);
            if (end == std::string_view::npos) return Fail(html, at, "a tag without its end");
            std::string_view tag = html.substr(at + 1, end - at - 1);
            if (tag.starts_with('/')) {
                if (open.empty() || m_elements[open.back()].name != tag.substr(1))
                    return Fail(html, at, "closes what is not open: " + std::string(tag));
                open.pop_back();
            } else {
                const bool closed = tag.ends_with('/');
                if (closed) tag.remove_suffix(1);
                TakeTag(html, at, tag);
                const std::string& name = m_elements.back().name;
                if (name == "style") { // raw text up to its end tag
                    const std::size_t close = html.find("</style", end);
                    m_elements.back().text = html.substr(end + 1, close - end - 1);
                    at = html.find('>', close) + 1;
                    continue;
                }
                if (!closed && name != "meta") open.push_back(m_elements.size() - 1);
            }
            at = end + 1;
        }
        if (!open.empty()) Fail(html, html.size(), "never closed: " + m_elements[open.back()].name);
    }

    void TakeTag(std::string_view html, std::size_t at, std::string_view tag)
    {
        HtmlElement element;
        const std::size_t nameEnd = std::min(tag.find(' '), tag.size());
        element.name = tag.substr(0, nameEnd);
        tag.remove_prefix(nameEnd);
        while (!tag.empty()) {
            if (tag == " open") { // the one attribute without a value
                element.attributes["open"] = "";
                break;
            }
            const std::size_t equals = tag.find("=\"");
            const std::size_t close = equals == std::string_view::npos ? equals : tag.find('"', equals + 2);
            if (tag[0] != ' ' || close == std::string_view::npos) {
                Fail(html, at, "an attribute that is not quoted");
                break;
            }
            const std::string_view value = tag.substr(equals + 2, close - equals - 2);
            CheckText(html, at, value);
            element.attributes[std::string(tag.substr(1, equals - 1))] = value;
            tag.remove_prefix(close + 1);
        }
        m_elements.push_back(std::move(element));
    }

    void CheckText(std::string_view html, std::size_t at, std::string_view text)
    {
        for (std::size_t i = text.find('&'); i != std::string_view::npos; i = text.find('&', i + 1)) {
            bool isReference = false;
            for (const char* known : {"&amp;", "&lt;", "&gt;", "&quot;", "&#39;"})
                isReference = isReference || text.substr(i).starts_with(known);
            if (!isReference) Fail(html, at, "a bare ampersand");
        }
        for (const char c : text)
            if (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') Fail(html, at, "a control character");
    }

    std::string m_error;
    std::vector<HtmlElement> m_elements;
};

} // namespace Keltrix::App::Trial
