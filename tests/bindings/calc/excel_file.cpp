#include "excel_file.h"

#include <cstdint>

#include "base/number.h"
#include "base/text.h"

namespace korvane::calc::testing {
namespace {

constexpr const char* kTypes = "http://schemas.openxmlformats.org/package/2006/content-types";
constexpr const char* kLinks = "http://schemas.openxmlformats.org/package/2006/relationships";
constexpr const char* kOffice =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr const char* kCells = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr const char* kKind = "application/vnd.openxmlformats-officedocument.spreadsheetml.";

std::string Escaped(const std::string& text) {
    std::string out;
    for (const char ch : text) {
        switch (ch) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '"': out += "&quot;"; break;
            default: out += ch;
        }
    }
    return out;
}

std::string CellText(const ExcelCell& cell) {
    const std::string& text = cell.content;
    std::string type;
    std::string inner = "<v>" + Escaped(text) + "</v>";
    if (text.starts_with('=')) {
        inner = "<f>" + Escaped(text.substr(1)) + "</f>";
        if (!cell.result.empty()) inner += "<v>" + cell.result + "</v>";
    } else if (text == "TRUE" || text == "FALSE") {
        type = " t=\"b\"";
        inner = text == "TRUE" ? "<v>1</v>" : "<v>0</v>";
    } else if (text.starts_with('#')) {
        type = " t=\"e\"";
    } else if (!IsNumeric(ToUtf16(text))) {
        type = " t=\"inlineStr\"";
        inner = "<is><t>" + Escaped(text) + "</t></is>";
    }
    return "<c r=\"" + cell.place + "\"" + type + ">" + inner + "</c>";
}

std::string SheetText(const ExcelSheet& sheet) {
    std::string rows;
    std::string row;
    const std::string height = sheet.height.empty() ? "" : "\" ht=\"" + sheet.height;
    for (const auto& cell : sheet.cells) {
        const std::string number = cell.place.substr(cell.place.find_first_of("123456789"));
        if (number != row) {
            rows +=
                (row.empty() ? "" : "</row>") + std::string("<row r=\"") + number + height + "\">";
            row = number;
        }
        rows += CellText(cell);
    }
    if (!row.empty()) rows += "</row>";
    return std::string("<worksheet xmlns=\"") + kCells + "\"><sheetData>" + rows +
           "</sheetData></worksheet>";
}

// An archive whose files are stored as they are.
class Archive {
public:
    void Add(const std::string& name, const std::string& content) {
        const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>" + content;
        std::string both;
        Append(both, 20, 2);  // the version needed to read it
        Append(both, 0, 2);   // no flags, and stored
        Append(both, 0, 2);
        Append(both, 0x5A210000, 4);  // 1 January 2025
        Append(both, Checksum(text), 4);
        Append(both, text.size(), 4);
        Append(both, text.size(), 4);
        Append(both, name.size(), 2);
        Append(both, 0, 2);
        directory_ += "PK\1\2";
        Append(directory_, 20, 2);
        directory_ += both;
        for (const int width : {2, 2, 2, 4}) Append(directory_, 0, width);
        Append(directory_, files_.size(), 4);
        directory_ += name;
        files_ += "PK\3\4" + both + name + text;
        ++count_;
    }
    std::string Bytes() const {
        std::string out = files_ + directory_ + "PK\5\6";
        Append(out, 0, 4);
        Append(out, count_, 2);
        Append(out, count_, 2);
        Append(out, directory_.size(), 4);
        Append(out, files_.size(), 4);
        Append(out, 0, 2);
        return out;
    }

private:
    static void Append(std::string& out, std::uint64_t number, int width) {
        for (int k = 0; k < width; ++k) out += static_cast<char>(number >> (8 * k) & 0xff);
    }
    static std::uint32_t Checksum(const std::string& text) {
        std::uint32_t sum = 0xffffffff;
        for (const char ch : text) {
            sum ^= static_cast<unsigned char>(ch);
            for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ (sum & 1 ? 0xedb88320 : 0);
        }
        return ~sum;
    }

    std::string files_;
    std::string directory_;
    int count_ = 0;
};

}  // namespace

std::string ExcelFile(const std::vector<ExcelSheet>& sheets, const std::string& settings) {
    const auto link = [](const std::string& id, const char* kind, const std::string& target) {
        return "<Relationship Id=\"" + id + "\" Type=\"" + kOffice + kind + "\" Target=\"" +
               target + "\"/>";
    };
    const auto part = [](const std::string& name, const char* kind) {
        return "<Override PartName=\"/" + name + "\" ContentType=\"" + kKind + kind + "+xml\"/>";
    };
    Archive archive;
    std::string types = part("xl/workbook.xml", "sheet.main");
    std::string links;
    std::string list;
    for (std::size_t k = 0; k < sheets.size(); ++k) {
        const std::string number = std::to_string(k + 1);
        const std::string file = "worksheets/sheet" + number + ".xml";
        archive.Add("xl/" + file, SheetText(sheets[k]));
        types += part("xl/" + file, "worksheet");
        links += link("r" + number, "/worksheet", file);
        list += "<sheet name=\"" + Escaped(sheets[k].name) + "\" sheetId=\"" + number +
                "\" r:id=\"r" + number + "\"/>";
    }
    archive.Add("[Content_Types].xml",
                std::string("<Types xmlns=\"") + kTypes + "\"><Default Extension=\"rels\" " +
                    "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>" +
                    types + "</Types>");
    const auto relations = [](const std::string& all) {
        return std::string("<Relationships xmlns=\"") + kLinks + "\">" + all + "</Relationships>";
    };
    archive.Add("_rels/.rels", relations(link("r1", "/officeDocument", "xl/workbook.xml")));
    archive.Add("xl/_rels/workbook.xml.rels", relations(links));
    archive.Add("xl/workbook.xml", std::string("<workbook xmlns=\"") + kCells + "\" xmlns:r=\"" +
                                       kOffice + "\"><sheets>" + list + "</sheets>" + settings +
                                       "</workbook>");
    return archive.Bytes();
}

}  // namespace korvane::calc::testing
