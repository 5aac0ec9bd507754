// What makes the host refuse or repair a file: each point checked on the bytes of a written one, by plain means.

#include <cstdlib>
#include <gmock/gmock.h>
#include <map>

#include "drawing/dwg/dwg_reader.h"
#include "drawing/dwg/header_section.h"
#include "drawing/dwg/trailing_sections.h"
#include "opened_file.h"
#include "tests/support/files.h"

namespace drawing::test {

using testing::Contains;

// The file header's six records stand at 0x19, nine bytes each.
dwg::SectionPlace sectionOf(const std::string& file, unsigned number)
{
    const std::size_t record = 0x19 + std::size_t(9) * number;
    EXPECT_EQ(numberAt(file, record, 1), number);
    return {static_cast<std::uint32_t>(numberAt(file, record + 1, 4)),
            static_cast<std::uint32_t>(numberAt(file, record + 5, 4))};
}

struct FileBytes
{
    explicit FileBytes(std::string bytes) : file(std::move(bytes)) {}

    const std::string file;
    const std::vector<dwg::ObjectPlace> places = dwg::readObjectMap(file, sectionOf(file, 2));

    std::size_t secondHeader() const { return file.find("\xD4\x7B\x21\xCE\x28\x93\x9F\xBF"); }
    /// Where the object ends, and its checksum begins.
    std::size_t endOf(const dwg::ObjectPlace& place) const
    {
        dwg::BitReader reader(std::string_view(file).substr(place.address));
        const std::size_t size = reader.modularShort();
        return place.address + reader.position() / 8 + size;
    }
    /// That of the auxiliary header.
    Handle seed() const { return numberAt(file, 0x61 + 79, 4); }
};

/// A file that we wrote, and those that the host wrote in the folder that HALVORAN_HOST_DRAWINGS names: what is asked
/// of ours holds for them.
class OursAndTheHosts : public testing::TestWithParam<std::filesystem::path>, protected FileBytes
{
protected:
    OursAndTheHosts() : FileBytes(GetParam().empty() ? dwgOf(makeDrawing()) : contentOf(GetParam())) {}
};

std::vector<std::filesystem::path> writtenFiles()
{
    std::vector<std::filesystem::path> files{""};
    if (const char* folder = std::getenv("HALVORAN_HOST_DRAWINGS")) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().extension() == ".dwg") {
                files.push_back(entry.path());
            }
        }
    }
    return files;
}

INSTANTIATE_TEST_SUITE_P(All, OursAndTheHosts, testing::ValuesIn(writtenFiles()));

class WrittenFile : public testing::Test, protected FileBytes
{
protected:
    WrittenFile() : FileBytes(dwgOf(makeDrawing())) {}

    const Document document = makeDrawing();

    dwg::DecodedObject decode(Handle handle) const
    {
        const TextEncoding encoding("ANSI_1252");
        const auto classes =
            dwg::readClasses(dwg::markedContent(file, sectionOf(file, 1), dwg::Marked::Classes, "classes"), encoding);
        dwg::RecordNames names;
        dwg::Allowance allowance(file.size());
        dwg::ObjectDecoder decoder(file, classes, encoding, names, allowance);
        for (const dwg::ObjectPlace& place : places) {
            if (place.handle == handle) {
                return decoder.decode(place);
            }
        }
        throw std::runtime_error("no such object");
    }
};

TEST_P(OursAndTheHosts, PartsStandInTheHostsOrderWithoutGaps)
{
    EXPECT_EQ(file.substr(0, 13), std::string("AC1015\0\0\0\0\0\x0F\x01", 13));
    EXPECT_EQ(numberAt(file, 0x13, 2), 30u) << "ANSI_1252";
    EXPECT_EQ(numberAt(file, 0x15, 4), 6u);
    EXPECT_EQ(sectionOf(file, 5), (dwg::SectionPlace{0x61, 123}));
    EXPECT_EQ(numberAt(file, 0x0D, 4), 0x61u + 123) << "the preview follows";
    const auto variables = sectionOf(file, 0);
    const auto classes = sectionOf(file, 1);
    const auto map = sectionOf(file, 2);
    const auto last = sectionOf(file, 4);
    EXPECT_EQ(classes.address, variables.address + variables.size);
    EXPECT_EQ(secondHeader(), map.address + map.size);
    EXPECT_EQ(last.size, 4u) << "the template";
    EXPECT_EQ(last.address + last.size, file.size());
}

TEST_P(OursAndTheHosts, ChecksumsHold)
{
    EXPECT_EQ(numberAt(file, 0x4F, 2), slowChecksum(file.substr(0, 0x4F)));
    for (const unsigned number : {0u, 1u}) {
        const auto place = sectionOf(file, number);
        const std::string summed = file.substr(place.address + 16, place.size - 16 - 18);
        EXPECT_EQ(numberAt(file, place.address + place.size - 18, 2), slowChecksum(summed)) << number;
    }
    for (const dwg::ObjectPlace& place : places) {
        const std::size_t end = endOf(place);
        EXPECT_EQ(numberAt(file, end, 2), slowChecksum(file.substr(place.address, end - place.address)));
    }
}

TEST_P(OursAndTheHosts, MarksAtTheEndAreTheComplementsOfThoseAtTheBeginning)
{
    const auto check = [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = 0; i < 16; ++i) {
            EXPECT_EQ(static_cast<unsigned char>(file[begin + i]) ^ static_cast<unsigned char>(file[end - 16 + i]),
                      255);
        }
    };
    for (const unsigned number : {0u, 1u}) {
        const auto place = sectionOf(file, number);
        check(place.address, place.address + place.size);
    }
    check(secondHeader(), sectionOf(file, 4).address);
    check(0x61 + 123, sectionOf(file, 0).address);
}

TEST_P(OursAndTheHosts, HandleSeedIsAboveEveryHandle)
{
    EXPECT_GT(seed(), places.back().handle);
    const auto variables = dwg::markedContent(file, sectionOf(file, 0), dwg::Marked::HeaderVariables, "variables");
    dwg::RecordNames names;
    EXPECT_EQ(dwg::readHeaderSection(variables, TextEncoding(), names).handleSeed, seed());
}

TEST_P(OursAndTheHosts, MapNamesEveryObjectOnceInOrder)
{
    EXPECT_EQ(numberAt(file, beginOfObjects(file) - 4, 4), 0x0DCAu);
    std::map<std::size_t, std::size_t> ends; // by the beginnings
    Handle before = 0;
    for (const dwg::ObjectPlace& place : places) {
        EXPECT_GT(place.handle, before);
        before = place.handle;
        ends[place.address] = endOf(place) + 2;
    }
    std::size_t end = beginOfObjects(file);
    for (const auto& [address, endOfObject] : ends) {
        EXPECT_EQ(address, end) << "objects lie one behind the other";
        end = endOfObject;
    }
    EXPECT_EQ(end, sectionOf(file, 2).address);
}

// Read bit by bit by the rules of the second header: its size, its own place, version, sections, roots.
TEST_P(OursAndTheHosts, SecondHeaderRepeatsTheFirst)
{
    dwg::BitReader reader(std::string_view(file).substr(secondHeader() + 16));
    EXPECT_EQ(reader.rawLong() + 32, sectionOf(file, 4).address - secondHeader());
    EXPECT_EQ(reader.longNumber(), static_cast<int>(secondHeader()));
    EXPECT_EQ(reader.raw(13), file.substr(0, 13));
    EXPECT_EQ(reader.shortNumber() & 0xFFFF, static_cast<int>(numberAt(file, 0x11, 2)));
    EXPECT_EQ(reader.rawShort(), 30u);
    EXPECT_EQ(reader.shortNumber(), 6);
    for (unsigned number = 0; number < 6; ++number) {
        const auto place = number == 4 ? dwg::SectionPlace{} : sectionOf(file, number);
        EXPECT_EQ(reader.byte(), number);
        EXPECT_EQ(reader.longNumber(), static_cast<int>(place.address));
        EXPECT_EQ(reader.longNumber(), static_cast<int>(place.size));
    }
    EXPECT_EQ(reader.shortNumber(), 14);
    for (unsigned number = 0; number < 14; ++number) {
        const unsigned size = reader.byte();
        EXPECT_EQ(reader.byte(), number);
        Handle handle = 0;
        for (unsigned i = 0; i < size; ++i) {
            handle = handle << 8 | reader.byte();
        }
        EXPECT_EQ(number == 0, handle == seed()) << "the seed comes first, then the roots";
        EXPECT_NE(handle, 0u);
    }
    const std::size_t summed = (reader.position() + 7) / 8;
    EXPECT_EQ(numberAt(file, secondHeader() + 16 + summed, 2), slowChecksum(file.substr(secondHeader() + 16, summed)));
}

TEST_F(WrittenFile, ModelSpaceKnowsItsFirstAndLastEntity)
{
    const auto block = decode(document.modelSpace().handle).block;
    EXPECT_EQ(block->first, document.modelSpace().entities.front());
    EXPECT_EQ(block->last, document.modelSpace().entities.back());
    Handle at = block->first;
    for (const Handle expected : document.modelSpace().entities) {
        EXPECT_EQ(at, expected);
        const dwg::Ties ties = decode(at).ties;
        at = ties.neighboursAdjacent ? at + 1 : ties.next;
    }
    EXPECT_EQ(decode(document.findBlock("DOOR")->handle).block->references.size(), 1u);
}

// As the host has it: an entry of no viewport, then one for each of the current layout, of which the sheet's own has a
// name; each leads to the next, and the viewport to its entry.
TEST_F(WrittenFile, ViewportsOfTheCurrentLayoutStandInTheirList)
{
    const Handle sheet = document.paperSpace().entities[0];
    const Handle view = document.paperSpace().entities[1];
    OpenedFile opened(document);
    const auto handlesOf = [&](Handle object, int type) {
        dwg::BitReader bits(opened.objects.at(object));
        EXPECT_EQ(bits.shortNumber(), type);
        bits.seek(bits.rawLong());
        std::vector<Handle> handles;
        while (bits.left() >= 8) {
            handles.push_back(bits.handle().target(object));
        }
        return handles;
    };
    const auto control = std::find_if(opened.objects.begin(), opened.objects.end(), [](const auto& each) {
        return dwg::BitReader(each.second).shortNumber() == 0x46;
    });
    ASSERT_NE(control, opened.objects.end());
    const Handle own = control->first;
    EXPECT_EQ(handlesOf(own, 0x46), (std::vector<Handle>{0, 0, own + 1, own + 2, own + 3}));
    EXPECT_EQ(handlesOf(own + 1, 0x47), (std::vector<Handle>{own, 0, 0, 0, 0}));
    EXPECT_EQ(handlesOf(own + 2, 0x47), (std::vector<Handle>{own, 0, 0, sheet, own + 3}));
    EXPECT_EQ(handlesOf(own + 3, 0x47), (std::vector<Handle>{own, 0, 0, view, 0}));
    EXPECT_EQ(handlesOf(sheet, 0x22).at(5), own + 2);
    EXPECT_EQ(handlesOf(view, 0x22).at(5), own + 3);
    dwg::BitReader named(opened.objects.at(own + 2));
    named.shortNumber();
    named.rawLong();
    named.handle();
    EXPECT_EQ(named.shortNumber(), 0) << "no extended data";
    EXPECT_EQ(named.longNumber(), 0) << "no reactors";
    EXPECT_EQ(named.text(), "1");
    EXPECT_EQ(named.bits(5), 0b11001u) << "referred to, of no external reference, on";
}

TEST_F(WrittenFile, ClassesOfImagesAreTheHosts)
{
    const auto classes =
        dwg::readClasses(dwg::markedContent(file, sectionOf(file, 1), dwg::Marked::Classes, ""), TextEncoding());
    std::map<std::string, dwg::ObjectClass> byName;
    for (const auto& each : classes) {
        byName[each.recordName] = each;
    }
    for (const char* name : {"IMAGE", "IMAGEDEF", "IMAGEDEF_REACTOR", "RASTERVARIABLES"}) {
        EXPECT_EQ(byName[name].application, "ISM") << name;
        EXPECT_EQ(byName[name].entity, std::string(name) == "IMAGE") << name;
    }
    EXPECT_EQ(byName["IMAGE"].className, "AcDbRasterImage");
}

// One object of a wrong type, and the host takes none of the root dictionary's. The types are those of the published
// list.
TEST_F(WrittenFile, EveryObjectHasTheTypeOfItsKind)
{
    const std::map<std::string, int> fixed{
        {"LINE", 0x13},  {"POLYLINE", 0x0F}, {"VERTEX", 0x0A},     {"INSERT", 0x07},      {"ATTRIB", 0x02},
        {"TEXT", 0x01},  {"SEQEND", 0x06},   {"BLOCK", 0x04},      {"ENDBLK", 0x05},      {"LAYER", 0x33},
        {"STYLE", 0x35}, {"LTYPE", 0x39},    {"APPID", 0x43},      {"DIMSTYLE", 0x45},    {"DICTIONARY", 0x2A},
        {"VPORT", 0x41}, {"VIEWPORT", 0x22}, {"MLINESTYLE", 0x49}, {"BLOCK_RECORD", 0x31}};
    const auto classes =
        dwg::readClasses(dwg::markedContent(file, sectionOf(file, 1), dwg::Marked::Classes, ""), TextEncoding());
    const Document read = readDrawingBytes(file);
    std::size_t checked = 0;
    for (const dwg::ObjectPlace& place : places) {
        const Object* object = read.find(place.handle);
        if (object == nullptr || object->name() == "TABLE") {
            continue;
        }
        const std::string name(object->name());
        const int type = dwg::BitReader(std::string_view(file).substr(place.address + 2)).shortNumber();
        const auto found = fixed.find(name);
        if (found != fixed.end()) {
            EXPECT_EQ(type, found->second) << name;
        } else {
            ASSERT_GE(type, 500) << name;
            EXPECT_EQ(classes.at(static_cast<std::size_t>(type) - 500).recordName, name);
        }
        ++checked;
    }
    EXPECT_GT(checked, 40u);
}

TEST_F(WrittenFile, ImageHasDictionaryDefinitionReactorAndSize)
{
    const Document read = readDrawingBytes(file);
    const Image* image = read.find<Image>(read.modelSpace().entities.back());
    ASSERT_NE(image, nullptr);
    const auto* definition = read.find<ImageDefinition>(image->definition);
    ASSERT_NE(definition, nullptr);
    EXPECT_EQ(definition->path, "C:\\Scans\\sheet.tif");
    EXPECT_EQ(definition->pixels, (Vector2{2000, 1400}));
    EXPECT_EQ(image->clip, (std::vector<Vector2>{{-0.5, -0.5}, {1999.5, 1399.5}}));
    ASSERT_NE(read.imageDictionary(), nullptr);
    EXPECT_EQ(read.imageDictionary()->find("sheet"), image->definition);
    const auto* reactor = read.find<ImageDefinitionReactor>(image->definitionReactor);
    ASSERT_NE(reactor, nullptr);
    EXPECT_EQ(reactor->classVersion, 2);
    EXPECT_EQ(image->classVersion, 0);
    EXPECT_EQ(definition->classVersion, 0);
    EXPECT_EQ(read.rasterVariables()->classVersion, 0);
    EXPECT_EQ(reactor->owner, image->handle);
    EXPECT_THAT(definition->reactors, Contains(image->definitionReactor));
    ASSERT_NE(read.rasterVariables(), nullptr);
}

TEST_F(WrittenFile, DefaultObjectsAreThere)
{
    const Document read = readDrawingBytes(file);
    for (const char* key :
         {"ACAD_GROUP", "ACAD_LAYOUT", "ACAD_MLINESTYLE", "ACAD_PLOTSETTINGS", "ACAD_PLOTSTYLENAME"}) {
        EXPECT_NE(read.find(read.rootDictionary().find(key)), nullptr) << key;
    }
    EXPECT_EQ(read.header.text("$CMLSTYLE"), "Standard");
    const auto* layouts = read.find<Dictionary>(read.rootDictionary().find("ACAD_LAYOUT"));
    const Object* model = read.find(layouts->find("Model"));
    ASSERT_NE(model, nullptr);
    bool modelFlag = false;
    for (const KeptGroups& kept : model->kept) {
        for (const Group& group : kept.groups) {
            modelFlag = modelFlag || (kept.subclass == "AcDbPlotSettings" && group == Group{70, "1024"});
        }
    }
    EXPECT_TRUE(modelFlag) << "the layout of the model says that it is one";
    EXPECT_NE(read.findLayer("of no table"), nullptr) << "a layer that an entity names is made";
}

TEST(WrittenImage, PolygonalBoundaryIsClosedAgainWhenRead)
{
    Document document;
    Image& image = addImage(document, "C:\\Scans\\sheet.tif");
    image.clipType = Image::ClipType::Polygon;
    image.clip = {{-0.5, -0.5}, {99.5, -0.5}, {50, 80}, {-0.5, -0.5}};
    const Document read = readDrawingBytes(dwgOf(document));
    EXPECT_EQ(read.find<Image>(image.handle)->clip, image.clip);
}

TEST(WrittenImage, BoundaryOfTooFewCornersIsThatOfTheWholeImage)
{
    Document document;
    const Handle image = addImage(document, "C:\\Scans\\sheet.tif").handle;
    for (const auto type : {Image::ClipType::Rectangle, Image::ClipType::Polygon}) {
        document.find<Image>(image)->clipType = type;
        document.find<Image>(image)->clip = {{3, 3}};
        const Document read = readDrawingBytes(dwgOf(document));
        EXPECT_EQ(read.find<Image>(image)->clipType, Image::ClipType::Rectangle);
        EXPECT_EQ(read.find<Image>(image)->clip, (std::vector<Vector2>{{-0.5, -0.5}, {1999.5, 1399.5}}));
    }
}

TEST(WrittenImage, IsTiedToItsDefinitionByAReactorEvenIfItCameWithoutOne)
{
    Document document;
    Image& image = addImage(document, "C:\\Scans\\sheet.tif");
    document.erase(image.definitionReactor);
    document.find<ImageDefinition>(image.definition)->reactors.clear();
    image.definitionReactor = 0;
    const Document read = readDrawingBytes(dwgOf(readDrawingBytes(writeDxf(document))));
    const Handle reactor = read.find<Image>(image.handle)->definitionReactor;
    ASSERT_NE(read.find<ImageDefinitionReactor>(reactor), nullptr);
    EXPECT_EQ(read.find(reactor)->owner, image.handle);
    EXPECT_THAT(read.find<ImageDefinition>(image.definition)->reactors, Contains(reactor));
}

TEST(OtherReleases, AreRefusedByName)
{
    const std::pair<const char*, const char*> releases[] = {{"AC1014", "release 14"},     {"AC1018", "release 2004"},
                                                            {"AC1021", "release 2007"},   {"AC1024", "release 2010"},
                                                            {"AC1027", "release 2013"},   {"AC1032", "release 2018"},
                                                            {"AC1099", "unknown release"}};
    for (const auto& [code, words] : releases) {
        std::string file = dwgOf(Document());
        file.replace(0, 6, code);
        try {
            readDrawingBytes(file);
            ADD_FAILURE() << code;
        } catch (const DrawingError& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(words));
        }
    }
}

} // namespace drawing::test
