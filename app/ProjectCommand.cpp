#include "app/ProjectCommand.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "app/FilePaths.h"
#include "suite/data/Att.h"
#include "suite/data/CurrentProject.h"
#include "suite/data/HorizontalLayMng.h"
#include "suite/data/Proj.h"
#include "suite/data/ProjectDb.h"
#include "suite/data/SysCode.h"
#include "suite/tools/CmdDataReader.h"
#include "suite/tools/KELAzLayer.h"

namespace kelaz {

namespace {

struct ProjectOptions {
    std::string file;
    bool force = false;
};

void Print(const CString& text) { std::fputs(ToUtf8(text).c_str(), stdout); }

CString Number(double value) { return FormatText(L"%g", value); }

CString Joined(const CStringArray& items, const wchar_t* separator) {
    CString text;
    for (INT_PTR i = 0; i < items.GetSize(); ++i) {
        if (i > 0) text += separator;
        text += items[i];
    }
    return text;
}

void PrintFloors() {
    using namespace KelAzDataMng;
    CArray<FloorRecord> floors;
    CProj::GetAllFloorData(floors);
    Print(L"\n楼层（名称：层高，底标高；敷设方式）\n");
    for (const FloorRecord& f : floors) {
        CStringArray modes;
        CHorizontalLayMng::GetLayModeName(f.strName, modes);
        Print(FormatText(L"  %s：%s，%s；%s\n", f.strName.GetString(),
                         Number(f.dHeight).GetString(), Number(f.dElevation).GetString(),
                         Joined(modes, L"、").GetString()));
        if (f.strName.Find(L',') < 0) continue;
        // The floors of a comma list have records of their own.
        int start = 0;
        for (CString one = f.strName.Tokenize(L",", start); !one.IsEmpty();
             one = f.strName.Tokenize(L",", start)) {
            FloorRecord own;
            if (IFloorMng::GetSeperateFloorRecordByFloorName(one, own, false))
                Print(FormatText(L"    %s：%s，%s\n", own.strName.GetString(),
                                 Number(own.dHeight).GetString(),
                                 Number(own.dElevation).GetString()));
        }
    }
}

void PrintCategories(const CStringArray& specs) {
    using namespace KelAzDataMng;
    Print(L"\n构件分类（截面类型 1：截面实体，2：设备）\n");
    for (const CString& spec : specs) {
        Print(L"  " + spec + L"\n");
        CStringArray bigs;
        CAtt::GetChildNames(spec, bigs);
        for (const CString& big : bigs) {
            Print(L"    " + big + L"\n");
            CStringArray smalls;
            CAtt::GetChildNames(spec + L"\\" + big, smalls);
            for (const CString& small : smalls) {
                Print(L"      " + small + L"\n");
                const CString smallPath = spec + L"\\" + big + L"\\" + small;
                CStringArray members;
                CAtt::GetChildNames(smallPath, members);
                for (const CString& name : members) {
                    SAttDataIndex index;
                    SectionInfo section;
                    CString height;
                    AttNameToAttId(smallPath + L"\\" + name, index);
                    CAttDetailMem member(index);
                    member.GetSectionInfo(section);
                    CString line = FormatText(L"        %s  [%d] %s %s", name.GetString(),
                                              section.nSectionType, section.strKind.GetString(),
                                              section.strSize.GetString());
                    if (member.GetSysUpHeight(height)) line += L"  安装高度 " + height;
                    Print(line + L"\n");
                }
            }
        }
    }
}

void PrintSystemCodes(const CStringArray& specs) {
    using namespace KelAzDataMng;
    Print(L"\n系统编号（编号 名称，颜色，线型）\n");
    for (const CString& spec : specs) {
        std::vector<CSysCodeData> codes;
        CISysCode::GetSpecCodeInfos(spec, codes);
        Print(L"  " + spec + L"：");
        for (size_t i = 0; i < codes.size(); ++i)
            Print(FormatText(L"%s%s %s（%d，%s）", i ? L"、" : L"",
                             codes[i].GetFullName().GetString(), codes[i].GetName().GetString(),
                             codes[i].GetColor(), codes[i].GetLineType().GetString()));
        Print(L"\n");
    }
}

void PrintCommandsAndLayers() {
    std::vector<CmdData> commands;
    CCmdDataReader::Instance()->GetAllCmdData(commands);
    Print(L"\n命令（标志：j 拖动时画块，a 需要构件和系统，u 更新属性栏）\n");
    for (const CmdData& c : commands) {
        CString flags;
        flags += c.bJigDrawBlock ? L'j' : L'-';
        flags += c.bCheckAttribute ? L'a' : L'-';
        flags += c.bUpdateUi ? L'u' : L'-';
        CString line = FormatText(L"  %-12s %s %s", c.strCmdName.GetString(), flags.GetString(),
                                  c.strDescription.GetString());
        if (!c.strBigType.IsEmpty()) line += L"  " + c.strBigType + L"：" + c.strSmallTypes;
        if (!c.strRefreshPath.IsEmpty()) line += L"  刷新 " + c.strRefreshPath;
        for (const CString& extra : c.vecExtra) line += L"  +" + extra;
        Print(line + L"\n");
    }
    std::vector<KelAzLayerRecord> layers;
    CKELAzLayer::GetAllLayers(layers);
    Print(FormatText(L"\n图层（%d 个：名称 颜色 线型）\n", static_cast<int>(layers.size())));
    for (const KelAzLayerRecord& l : layers)
        Print(FormatText(L"  %s %d %s\n", l.strName.GetString(), l.nColor,
                         l.strLineType.GetString()));
}

void PrintProject() {
    using namespace KelAzDataMng;
    const CString path = CProj::GetPrjPath();
    Print(L"项目 " + CProj::GetPrjName() +
          (path.IsEmpty() ? CString(L"（内置，未保存）") : L"（" + path + L"）") + L"\n");
    Print(L"当前专业 " + CProj::GetCurrentSpec() + L"，当前楼层 " + CProj::GetCurFloorName() +
          L"\n");
    CStringArray specs;
    CProj::GetAllSpecs(specs);
    Print(L"\n专业：" + Joined(specs, L"、") + L"\n");
    PrintFloors();
    PrintCategories(specs);
    PrintSystemCodes(specs);
    PrintCommandsAndLayers();
}

int RunInit(const ProjectOptions& opt) {
    if (const std::string bad = CheckWritePath(opt.file, "项目"); !bad.empty()) {
        std::fprintf(stderr, "[kelaz] %s\n", bad.c_str());
        return 2;
    }
    ProjectOpenResult result;
    if (!ProjectDb::CreateDefaultFile(FromUtf8(opt.file), opt.force, result)) {
        std::fprintf(stderr, "[kelaz] 不能建立项目 %s：%s\n", opt.file.c_str(),
                     result.message.c_str());
        return result.problem == ProjectProblem::Exists ? 2 : 1;
    }
    std::printf("[kelaz] 默认项目已写入 %s。\n", opt.file.c_str());
    return 0;
}

int RunShow(const ProjectOptions& opt) {
    if (const std::string bad = CheckReadPath(opt.file, "项目");
        !opt.file.empty() && !bad.empty()) {
        std::fprintf(stderr, "[kelaz] %s\n", bad.c_str());
        return 2;
    }
    CString error;
    const bool opened = opt.file.empty() ? KelAzDataMng::OpenDefaultProject()
                                         : KelAzDataMng::OpenProject(FromUtf8(opt.file), error);
    if (!opened) {
        std::fprintf(stderr, "[kelaz] 不能打开项目 %s：%s\n", opt.file.c_str(),
                     ToUtf8(error).c_str());
        return 2;
    }
    PrintProject();
    KelAzDataMng::CloseProject();
    return 0;
}

}  // namespace

void AddProjectCommands(CLI::App& app, int& exitStatus) {
    CLI::App* project = app.add_subcommand("project", "Create and inspect project databases");
    project->require_subcommand(1);

    auto init = std::make_shared<ProjectOptions>();
    CLI::App* initCmd =
        project->add_subcommand("init", "Write the default project (catalogue) to a new file");
    initCmd->add_option("FILE", init->file, "Project file to create")->required();
    initCmd->add_flag("--force", init->force, "Replace the file if it exists");
    initCmd->callback([init, &exitStatus] { exitStatus = RunInit(*init); });

    auto show = std::make_shared<ProjectOptions>();
    CLI::App* showCmd = project->add_subcommand(
        "show", "Print a project: specialities, floors, categories, system codes, commands");
    showCmd->add_option("FILE", show->file,
                        "Project file; without it the built-in default project is shown");
    showCmd->callback([show, &exitStatus] { exitStatus = RunShow(*show); });
}

}  // namespace kelaz
