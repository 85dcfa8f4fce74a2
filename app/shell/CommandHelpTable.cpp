#include "app/shell/CommandHelpTable.h"

#include <cwctype>

namespace kelaz {

namespace {

bool SameName(const wchar_t* a, const wchar_t* b) {
    for (; *a != 0 && *b != 0; ++a, ++b) {
        if (std::towupper(static_cast<wint_t>(*a)) != std::towupper(static_cast<wint_t>(*b)))
            return false;
    }
    return *a == *b;
}

}  // namespace

const std::vector<CommandHelpRow>& CommandHelpTable() {
    static const std::vector<CommandHelpRow> table = {
        {L"ARC", L"指定圆弧的起点:\n指定圆弧的第二个点:\n指定圆弧的端点:",
         L"ARC 0,0 500,300 1000,0"},
        {L"PLINE",
         L"指定起点:\n指定下一点或 [圆弧(A)/闭合(C)/放弃(U)]:\n"
         L"指定圆弧的第二个点或 [直线(L)/放弃(U)]:\n指定圆弧的端点:\n回车结束",
         L"PLINE 0,0 1000,0 A 1500,500 1000,1000 L 0,1000 C"},
        {L"ERASE", L"选择对象 [窗口(W)/窗交(C)]:（点选；W、C 各要两个角点）\n回车删除选中的对象",
         L"ERASE W 0,0 3000,2000\n(回车)"},
        {L"U", L"（不提问）放弃上一个命令，并说出放弃的是哪个命令", L"U"},
        {L"UNDO", L"输入要放弃的操作数目或 [开始(BE)/结束(E)/标记(M)/后退(B)] <1>:",
         L"UNDO M\nUNDO B\nUNDO 3"},
        {L"ATT", L"输入构件名称或路径[列表(?)]<当前构件>:\n（同名构件多于一个时弹出选择对话框）",
         L"ATT 吸顶灯"},
        {L"SYS", L"输入系统编号[列表(?)]<当前系统编号>:", L"SYS WL"},
        {L"FLOOR", L"输入当前楼层[列表(?)]<当前楼层>:", L"FLOOR 2"},
        {L"SPEC", L"输入专业[列表(?)]<当前专业>:", L"SPEC 电气"},
        {L"PLACE",
         L"输入标高(数值或楼层形式，如3F+500)<上次的标高>:\n指定插入点[参考点(R)]:\n"
         L"R: 指定参考点: 然后 请指定插入点:（@dx,dy 从参考点量起，回车取参考点）\n回车结束",
         L"PLACE 3F+500 1000,1000 2000,1000\n(回车)"},
        {L"RECTLAYOUT",
         L"指定布置区域的角点:\n指定行方向的另一端:\n指定列方向的另一端:\n输入行数<2>:\n"
         L"输入每行个数<3>:\n输入行方向边距<0>:\n输入列方向边距<0>:\n"
         L"输入标高(数值或楼层形式，如3F+500)<上次的标高>:\n"
         L"已有构件的位置[跳过(S)/仍然布置(P)/放弃(X)]<跳过>:（只在有位置已有构件时）",
         L"RECTLAYOUT 0,0 6000,0 0,4000 2 3 1000 800 2F+2800"},
        {L"ARCLAYOUT",
         L"选择圆弧、多义线或引线:\n输入布置个数<3>:\n输入两端边距<0>:\n"
         L"输入标高(数值或楼层形式，如3F+500)<上次的标高>:\n"
         L"已有构件的位置[跳过(S)/仍然布置(P)/放弃(X)]<跳过>:（只在有位置已有构件时）",
         L"ARCLAYOUT 866,500 3 0 2800"},
        {L"SECTORLAYOUT",
         L"指定外圆弧的起点:\n指定外圆弧上的第二点:\n指定外圆弧的终点:\n"
         L"指定内圆弧上的一点<圆心>:\n输入圈数<3>:\n输入外圈个数<5>:\n输入每圈递减个数<1>:\n"
         L"输入标高(数值或楼层形式，如3F+500)<上次的标高>:",
         L"SECTORLAYOUT 3000,0 2121.32,2121.32 0,3000 1000,0 3 5 1 3000"},
        {L"SPLITRISER",
         L"选择要按楼层拆分的立管:\n选择对象 [窗口(W)/窗交(C)]:（点选；W、C "
         L"各要两个角点；回车结束选择）\n"
         L"按上表拆分立管吗？[是(Y)/否(N)]<否>:",
         L"SPLITRISER W 0,0 1200,800\n(回车)\nY"},
        {L"CONNECTED", L"指定查询点<回车结束>:（可连续查询）", L"CONNECTED 3000,3700\n(回车)"},
        {L"SOFTPIPE",
         L"指定第一点[参考点(R)]:（R: 指定基点: 然后 指定第一点:）\n"
         L"指定下一点[弧线(A)/退回(U)]:\n"
         L"A: 指定圆弧的中间点: 然后 指定圆弧的端点:（圆弧命令）\n"
         L"回车结束这一根，再画下一根；取消结束命令（不足两点的一根不保留）",
         L"SOFTPIPE 0,0 1000,0 A 1500,500 1000,1000 2000,1000\n(回车)\n^C"},
        {L"MULTIPIPE",
         L"[多管绘制] 对话框：在树里选管线添加一行（select 211 照明导线\\BV-2.5），"
         L"cell 10001 行 列 文字 改偏移，choose 10001 行 列 项 选系统编号或敷设方式，"
         L"row 10001 行 然后 click 212 删除，ok\n"
         L"指定第一点[参考点(R)]\n捕捉下一个端点[A-圆弧，U-退回]（drag x,y ? 显示预览）\n"
         L"A: 输入弧线的除端点外的任意点: 然后 端点\n回车开始下一组；在第一点取消结束命令",
         L"MULTIPIPE\nselect 211 照明导线\\BV-2.5\nselect 211 导管\\SC20\nok\n"
         L"0,0 5000,0 5000,4000 A 6000,6000 8000,6500\n(回车)\n^C"},
        {L"LEAD",
         L"输入标高(数值或楼层形式，如3F+500)<上次的标高>:\n指定第一点[参考点(R)]:\n"
         L"指定下一点[圆弧(A)/回退(U)]<回车结束>:\n"
         L"A: 指定圆弧上的第二点: 然后 指定圆弧的端点:\nU: 去掉上一段\n回车结束",
         L"LEAD 3000 1000,1000 3000,1000 A 4000,2000 3000,3000 U\n(回车)"},
        {L"MAINLEAD",
         L"指定主引线位置<回车结束>:\n输入起点标高(数值或楼层形式，如3F+500)<上次的标高>:\n"
         L"输入终点标高(数值或楼层形式，如3F+500)<上次的标高>:\n（每个位置问一次标高，回车结束）",
         L"MAINLEAD 1000,3700 1F+0 3F+500\n(回车)"},
        {L"RISER",
         L"指定立管位置<回车结束>:\n输入起点标高(数值或楼层形式，如3F+500)<上次的标高>:\n"
         L"输入终点标高(数值或楼层形式，如3F+500)<上次的标高>:\n（每个位置问一次标高，回车结束）",
         L"RISER 5500,500 1F+0 3F+500\n(回车)"},
        {L"MAINPIPE", L"同 RISER", L"MAINPIPE 5500,500 0 12000\n(回车)"},
        {L"PIPE",
         L"输入标高(数值或楼层形式，如3F+500)<上次的标高>:\n指定第一点[参考点(R)]:\n"
         L"指定下一点[回退(U)]<回车结束>:\nU: 去掉上一段\n回车结束",
         L"PIPE 600 600,500 5500,500 5500,3500\n(回车)"},
        {L"EXTEND", L"选择风管<回车结束>:\n指定延伸到的点:\n（可连续延伸，回车结束）",
         L"EXTEND 4000,2000 6000,2000\n(回车)"},
        {L"NEWDUCT",
         L"输入风管小类[列表(?)]<暖通\\风管\\矩形风管>:\n输入参照的风管规格<该小类的第一个>:\n"
         L"输入新规格名称:\n输入宽度(圆形风管为直径):\n输入高度<回车为圆形风管>:",
         L"NEWDUCT 矩形风管 镀锌钢板矩形风管 矩形风管800x400 800 400"},
        {L"LEVEL",
         L"[标高] 对话框: set 232 标高, check 207 0/1, click 204 拾取对象的标高, ok 或 cancel",
         L"LEVEL\nset 232 3F+500\nok"},
        {L"LEVELBOX",
         L"[标高] 对话框（透明命令，MULTIPIPE 的提问中输入 'LevelBox）: set 232 标高, "
         L"check 207 0/1, ok",
         L"'LEVELBOX\nset 232 3500\nok"},
        {L"PICKHEIGHT", L"选择对象:（透明命令，在提问中输入 'PickHeight）",
         L"'PickHeight\n1000,800"},
        {L"SAVE", L"保存为文件 <当前文件名>:（.kdw）", L"SAVE plan.kdw"},
        {L"EXPORT", L"输出到文件 (.dxf .png .svg .pdf):", L"EXPORT plan.dxf"},
        {L"DUMP", L"（不提问）每个实体一行 JSON", L"DUMP"},
        {L"HELP", L"（不提问）列出命令；HELP 命令名 说明一个命令", L"HELP RECTLAYOUT"},
        {L"QUIT", L"（图形有未保存的修改时先询问）", L"QUIT"},
        {L"OPEN",
         L"打开图形文件[项目(P)]:\nP: 项目文件 <当前项目>: 然后 打开图形文件:\n"
         L"（图形有未保存的修改时先询问；另一个项目的图形清除记住的多管设置行、立管拆分列表和楼层模"
         L"型）",
         L"OPEN plan2.kdw\nOPEN P school.kelaz school.kdw"},
        {L"PROJECT",
         L"项目文件 <当前项目>:（回车不换；换了项目就开始一张新图形，图形有未保存的修改时先询问）",
         L"PROJECT school.kelaz"},
        {L"REMEMBERED", L"（不提问）列出本项目记住的多管设置行、立管拆分列表和楼层模型",
         L"REMEMBERED"},
        {L"STOREYS", L"（不提问）列出楼层模型的各层和标高范围；没有楼层模型时先建立", L"STOREYS"},
    };
    return table;
}

const CommandHelpRow* FindCommandHelp(const wchar_t* name) {
    for (const CommandHelpRow& row : CommandHelpTable()) {
        if (SameName(row.name, name)) return &row;
    }
    return nullptr;
}

}  // namespace kelaz
