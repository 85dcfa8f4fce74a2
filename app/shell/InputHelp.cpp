#include "app/shell/InputHelp.h"

namespace kelaz {

const char* const kInputHelp =
    R"(kelaz 命令行读什么（kelaz shell，以及 kelaz run 的脚本）

一行是一个回答。在命令提示（"命令: "）下，一行是一个命令名，大小写不限；HELP 列出命令。
命令接着在命令行上逐个提问，每一行回答正在等待的那个问题：

  x,y  或  x,y,z        一个点（普通小数：100,-20.5）
  @dx,dy[,dz]           相对于上一点（LASTPOINT）的点；单独的 "@" 就是上一点
  WORD                  问题的关键字：它的大写字母或更长的前缀，大小写不限
                        （A 表示 弧线(A)，BE 表示 BEgin）；文字问题要的文字
  （空行）              回车：取默认值，或结束命令
  ^C  或  ESC           取消命令（"*取消*"）
  drag x,y[,z]          拖动预览进行中时移动光标（随后输入一个点即确定）
  'NAME                 在等待的问题中运行透明命令
  # ...                 注释：只有注释的一行被跳过；空白之后的 '#' 结束这一行的回答

错误的回答（不是关键字的词、写错的点、没有拖动时的 drag）会在命令行上指出，并重新提问。

对话框打开时和每次操作之后显示为文字：先是标题，然后是每个控件的编号（ID）、种类、标签、
助记键和状态；列表项从 0 编号，树项按层缩进，选中的有标记。对话框打开时，每一行是对它的
一个操作：
  ok | cancel | set ID TEXT | check ID 0|1|2 | click ID | select ID ITEM | key C
（key space、key enter）；空行就是回车。树项可以用它的文字选中，也可以用从顶层起的路径
（暖通\风口）。提问的消息框接受 yes / no（或 ok / cancel）。

宿主命令：ARC（起点、第二个点、端点），ERASE（逐个拾取；W 窗口，C 窗交；回车结束），
U（退回一步），UNDO（步数；M 标记，B 退回到标记，BE/E 编组）。
会话命令：SAVE [文件]，EXPORT 文件（.dxf .png .svg .pdf），DUMP，HELP，QUIT。

在终端上（kelaz shell），Ctrl-C 取消正在等待的问题，和 ^C 一样；在命令提示下连按两次
Ctrl-C 会问是否结束。Ctrl-D 结束正在等待的命令，在命令提示下结束会话。QUIT 和命令提示下的
Ctrl-D 会先问怎样处理未保存的修改：yes 保存后结束，no 不保存就结束，cancel 留下。

读到的每一行都记在图形旁边的会话记录里（plan.kdw.journal），直到会话结束。会话没有正常
结束（崩溃、被终止）之后，下一次打开这张图形的会话会提出按记录重建它；
kelaz recover DRAWING [--save OUT] 不问就重建。

kelaz run SCRIPT 在每行的提示之后回显这一行，所以它的输出读起来就像敲出来的会话。
脚本结束时若还有命令在等待，就取消这个命令，指出停在哪一行、哪个问题，不写出任何输出，
并以状态 1 退出。
)";

}  // namespace kelaz
