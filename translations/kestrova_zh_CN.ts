<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>AravisCamera</name>
    <message>
        <source>&quot;%1&quot; is no address of a camera</source>
        <translation>“%1”不是相机地址</translation>
    </message>
    <message>
        <source>no answer in time</source>
        <translation>未在规定时间内应答</translation>
    </message>
    <message>
        <source>a USB3 Vision camera&apos;s data have no times of arrival, which the throughput is measured by</source>
        <translation>USB3 Vision 相机的数据没有到达时间，而吞吐量要靠到达时间来测量</translation>
    </message>
    <message>
        <source>Times of arrival</source>
        <translation>到达时间</translation>
    </message>
</context>
<context>
    <name>CameraConnection</name>
    <message>
        <source>no answer. Is the camera switched on, and is this its address?</source>
        <translation>无应答。相机是否已开机，地址是否正确？</translation>
    </message>
    <message>
        <source>another program or computer has control of the camera</source>
        <translation>另一个程序或计算机正在控制该相机</translation>
    </message>
    <message>
        <source>refused: %1</source>
        <translation>被拒绝：%1</translation>
    </message>
    <message>
        <source>there is no way to this address. Is the network interface up?</source>
        <translation>没有通往该地址的路由。网络接口是否已启用？</translation>
    </message>
    <message>
        <source>no camera with this serial number answers</source>
        <translation>没有该序列号的相机应答</translation>
    </message>
</context>
<context>
    <name>CameraDock</name>
    <message>
        <source>Cameras</source>
        <translation>相机</translation>
    </message>
    <message>
        <source>Open or close the selected camera; closing ends a measurement with it</source>
        <translation>打开或关闭选中的相机；关闭会结束该相机的测量</translation>
    </message>
    <message>
        <source>Start or stop showing live images of the selected camera</source>
        <translation>开始或停止显示选中相机的实时图像</translation>
    </message>
    <message>
        <source>The image format of the selected camera</source>
        <translation>选中相机的图像格式</translation>
    </message>
    <message>
        <source>Image format</source>
        <translation>图像格式</translation>
    </message>
    <message>
        <source>Fo&amp;rmat:</source>
        <translation>格式(&amp;R)：</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>打开(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Stop view</source>
        <translation>停止显示(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Start view</source>
        <translation>开始显示(&amp;S)</translation>
    </message>
    <message>
        <source>%1 could not be opened</source>
        <translation>无法打开 %1</translation>
    </message>
    <message>
        <source>%1 could not be started</source>
        <translation>无法启动 %1</translation>
    </message>
    <message>
        <source>%1 refused the format %2</source>
        <translation>%1 拒绝了格式 %2</translation>
    </message>
    <message>
        <source>Open or close the camera</source>
        <translation>打开或关闭相机</translation>
    </message>
    <message>
        <source>Start or stop its view</source>
        <translation>开始或停止其画面</translation>
    </message>
    <message>
        <source>Sort cameras by the next column</source>
        <translation>按下一列排序相机</translation>
    </message>
    <message>
        <source>Clos&amp;e</source>
        <translation>关闭(&amp;E)</translation>
    </message>
</context>
<context>
    <name>CameraEvents</name>
    <message>
        <source>A camera</source>
        <translation>某相机</translation>
    </message>
    <message>
        <source>%1 opened</source>
        <translation>%1 已打开</translation>
    </message>
    <message>
        <source>%1 closed</source>
        <translation>%1 已关闭</translation>
    </message>
    <message>
        <source>%1 lost</source>
        <translation>%1 已丢失</translation>
    </message>
    <message>
        <source>%1 is back</source>
        <translation>%1 已恢复</translation>
    </message>
    <message>
        <source>%1 taken over by a plug-in</source>
        <translation>%1 已由插件接管</translation>
    </message>
    <message>
        <source>%1 given back</source>
        <translation>%1 已交还</translation>
    </message>
    <message>
        <source>%1 sends frames again</source>
        <translation>%1 重新开始发送帧</translation>
    </message>
    <message>
        <source>%1 is measured but has sent no frame for %2 s</source>
        <translation>正在测量 %1，但它已有 %2 s 未发送帧</translation>
    </message>
    <message>
        <source>%1 lost frames: %2</source>
        <translation>%1：丢失帧：%2</translation>
    </message>
</context>
<context>
    <name>CameraList</name>
    <message>
        <source>Camera</source>
        <translation>相机</translation>
    </message>
    <message>
        <source>Id</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>MB/s</source>
        <translation>MB/s</translation>
    </message>
    <message>
        <source>Frames/s</source>
        <translation>帧/s</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>缺失</translation>
    </message>
    <message>
        <source>What the camera delivers, to the view or to a plug-in</source>
        <translation>相机向视图或插件传送的数据</translation>
    </message>
    <message>
        <source>Frames that did not arrive since the camera was opened</source>
        <translation>相机打开以来未到达的帧</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>相机</translation>
    </message>
    <message>
        <source>The cameras of this machine; the selected one is shown in the middle.
Enter or a double click opens a camera, typing searches for its name,
a click on a heading sorts.</source>
        <translation>本机的相机；选中的相机显示在中间。
按回车或双击打开相机，键入可查找名称，
点击标题可排序。</translation>
    </message>
    <message>
        <source>lost</source>
        <translation>丢失</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>已关闭</translation>
    </message>
    <message>
        <source>silent %1 s</source>
        <translation>静默 %1 秒</translation>
    </message>
    <message>
        <source>measuring</source>
        <translation>测量中</translation>
    </message>
    <message>
        <source>live</source>
        <translation>实时</translation>
    </message>
    <message>
        <source>open</source>
        <translation>已打开</translation>
    </message>
</context>
<context>
    <name>CameraSelection</name>
    <message>
        <source>there is no camera &quot;%1&quot;</source>
        <translation>没有相机“%1”</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is the name of several cameras, give one&apos;s ID: %2</source>
        <translation>“%1”是多台相机的名称，请给出其中一台的 ID：%2</translation>
    </message>
</context>
<context>
    <name>CxExportToolButton</name>
    <message>
        <source>Copy to clipboard</source>
        <translation>复制到剪贴板</translation>
    </message>
    <message>
        <source>Save to file...</source>
        <translation>保存到文件...</translation>
    </message>
</context>
<context>
    <name>DeviceFamilies</name>
    <message>
        <source>GigE Vision and USB3 Vision are not installed (package kestrova-aravis)</source>
        <translation>未安装 GigE Vision 和 USB3 Vision（软件包 kestrova-aravis）</translation>
    </message>
</context>
<context>
    <name>EventDock</name>
    <message>
        <source>Events</source>
        <translation>事件</translation>
    </message>
    <message>
        <source>C&amp;lear</source>
        <translation>清空(&amp;L)</translation>
    </message>
    <message>
        <source>Empty the list</source>
        <translation>清空列表</translation>
    </message>
    <message>
        <source>Clear the event list</source>
        <translation>清空事件列表</translation>
    </message>
    <message>
        <source>S&amp;ave...</source>
        <translation>保存(&amp;A)...</translation>
    </message>
    <message>
        <source>Save the event list</source>
        <translation>保存事件列表</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>Text files (*.txt);;All files (*)</translation>
    </message>
    <message>
        <source>The list could not be saved.
%1: %2</source>
        <translation>无法保存列表。
%1：%2</translation>
    </message>
    <message>
        <source>What has happened, the newest line at the end; equal events share a line</source>
        <translation>发生的事件，最新的在末尾；相同的事件合并为一行</translation>
    </message>
    <message>
        <source>The list keeps the last 100,000 events</source>
        <translation>列表保留最近的 100,000 个事件</translation>
    </message>
    <message>
        <source>Write every event with its time into a text file</source>
        <translation>将每个事件及其时间写入文本文件</translation>
    </message>
    <message>
        <source>No longer kept: %1</source>
        <translation>已不再保留：%1</translation>
    </message>
</context>
<context>
    <name>EventLog</name>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>次数</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>事件</translation>
    </message>
    <message>
        <source>Older events that are no longer kept: %1</source>
        <translation>已不再保留的较早事件：%1</translation>
    </message>
</context>
<context>
    <name>ImageView</name>
    <message>
        <source>Mono 8</source>
        <translation>Mono 8</translation>
    </message>
    <message>
        <source>Mono 16 (%1 bit)</source>
        <translation>Mono 16（%1 位）</translation>
    </message>
    <message>
        <source>Transport data</source>
        <translation>传输数据</translation>
    </message>
    <message>
        <source>Format %1</source>
        <translation>格式 %1</translation>
    </message>
    <message>
        <source>Image of the selected camera</source>
        <translation>选中相机的图像</translation>
    </message>
    <message>
        <source>The newest image of the camera that is selected in the list</source>
        <translation>列表中选中相机的最新图像</translation>
    </message>
    <message>
        <source>%1   %2 × %3   frame %4</source>
        <translation>%1   %2 × %3   第 %4 帧</translation>
    </message>
    <message>
        <source>   %1 frames/s</source>
        <translation>   %1 帧/s</translation>
    </message>
    <message>
        <source>No image yet. Press &quot;Start view&quot;, or start a measurement.</source>
        <translation>尚无图像。请按“开始显示”或开始测量。</translation>
    </message>
    <message>
        <source>No open camera is selected.</source>
        <translation>未选中已打开的相机。</translation>
    </message>
</context>
<context>
    <name>LostFrames</name>
    <message>
        <source>%1 on the way</source>
        <translation>%1 帧在途中</translation>
    </message>
    <message>
        <source>%1 in the socket</source>
        <translation>%1 帧在套接字中</translation>
    </message>
    <message>
        <source>%1 for want of a buffer</source>
        <translation>%1 帧因无空闲缓冲</translation>
    </message>
    <message>
        <source>%1 too late</source>
        <translation>%1 帧到达过迟</translation>
    </message>
    <message>
        <source>%1 on this host, nothing tells why</source>
        <translation>%1 帧在本机丢失，原因不明</translation>
    </message>
    <message>
        <source>%1 nobody knows where</source>
        <translation>%1 帧丢失位置未知</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Kestrova</source>
        <translation>Kestrova</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Detail level</source>
        <translation>详细程度(&amp;D)</translation>
    </message>
    <message>
        <source>How much plug-ins show</source>
        <translation>插件显示内容的多少</translation>
    </message>
    <message>
        <source>&amp;1  Beginner</source>
        <translation>&amp;1  初级</translation>
    </message>
    <message>
        <source>&amp;3  Standard</source>
        <translation>&amp;3  标准</translation>
    </message>
    <message>
        <source>&amp;5  Developer</source>
        <translation>&amp;5  开发者</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Plug-ins...</source>
        <translation>插件(&amp;P)...</translation>
    </message>
    <message>
        <source>&amp;About Kestrova...</source>
        <translation>关于 Kestrova(&amp;A)...</translation>
    </message>
    <message>
        <source>About &amp;Qt...</source>
        <translation>关于 Qt(&amp;Q)...</translation>
    </message>
    <message>
        <source>About Kestrova</source>
        <translation>关于 Kestrova</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Kestrova %1&lt;/h3&gt;&lt;p&gt;Views machine-vision cameras and measures their data throughput.&lt;/p&gt;&lt;p&gt;Kestrova Imaging, &lt;a href=&quot;https://kestrova.example&quot;&gt;kestrova.example&lt;/a&gt;&lt;/p&gt;&lt;p&gt;Free software under the GNU General Public License, version 3 or later.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Kestrova %1&lt;/h3&gt;&lt;p&gt;查看机器视觉相机并测量其数据吞吐量。&lt;/p&gt;&lt;p&gt;Kestrova Imaging, &lt;a href=&quot;https://kestrova.example&quot;&gt;kestrova.example&lt;/a&gt;&lt;/p&gt;&lt;p&gt;自由软件，遵循 GNU 通用公共许可证第 3 版或更高版本。&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&amp;Reset layout</source>
        <translation>重置布局(&amp;R)</translation>
    </message>
    <message>
        <source>Ctrl+Shift+R</source>
        <translation>Ctrl+Shift+R</translation>
    </message>
    <message>
        <source>&amp;Picture</source>
        <translation>图像(&amp;P)</translation>
    </message>
    <message>
        <source>Ctrl+Shift+P</source>
        <translation>Ctrl+Shift+P</translation>
    </message>
    <message>
        <source>&amp;2  Basic</source>
        <translation>&amp;2  基础</translation>
    </message>
    <message>
        <source>&amp;4  Expert</source>
        <translation>&amp;4  专家</translation>
    </message>
    <message>
        <source>&amp;Cameras</source>
        <translation>相机(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Shortcuts...</source>
        <translation>快捷键(&amp;K)...</translation>
    </message>
</context>
<context>
    <name>MessageQueue</name>
    <message>
        <source>%1 log messages were dropped</source>
        <translation>已丢弃 %1 条日志消息</translation>
    </message>
    <message>
        <source>Thread %1, %2 line %3, %4</source>
        <translation>线程 %1，%2 第 %3 行，%4</translation>
    </message>
</context>
<context>
    <name>PacketTap</name>
    <message>
        <source>the times of arrival need the right to capture packets. As root: setcap cap_net_raw=ep %1</source>
        <translation>到达时间需要抓取数据包的权限。以 root 身份运行：setcap cap_net_raw=ep %1</translation>
    </message>
    <message>
        <source>kestrova-tap failed in step %1: %2</source>
        <translation>kestrova-tap 在步骤 %1 失败：%2</translation>
    </message>
    <message>
        <source>kestrova-tap does not answer</source>
        <translation>kestrova-tap 无应答</translation>
    </message>
    <message>
        <source>kestrova-tap ended at once</source>
        <translation>kestrova-tap 立即退出</translation>
    </message>
    <message>
        <source>the program %1, which tells times of arrival, cannot be started</source>
        <translation>无法启动提供到达时间的程序 %1</translation>
    </message>
</context>
<context>
    <name>PluginManager</name>
    <message>
        <source>It is no plug-in. %1</source>
        <translation>它不是插件。%1</translation>
    </message>
    <message>
        <source>It is a plug-in for another program (%1).</source>
        <translation>它是其他程序（%1）的插件。</translation>
    </message>
    <message>
        <source>It cannot be loaded. %1</source>
        <translation>无法加载。%1</translation>
    </message>
    <message>
        <source>It does not have the interface %1.</source>
        <translation>它没有接口 %1。</translation>
    </message>
    <message>
        <source>It could not be initialised.</source>
        <translation>无法初始化。</translation>
    </message>
    <message>
        <source>Others can change what this plug-in does: they can write to %1.</source>
        <translation>其他用户可以改变此插件的行为：他们可以写入 %1。</translation>
    </message>
    <message>
        <source>It ran out of memory.</source>
        <translation>内存不足。</translation>
    </message>
    <message>
        <source>It failed: %1</source>
        <translation>失败：%1</translation>
    </message>
    <message>
        <source>It failed without a reason.</source>
        <translation>失败，未给出原因。</translation>
    </message>
</context>
<context>
    <name>PluginsDialog</name>
    <message>
        <source>Not used</source>
        <translation>未使用</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>说明</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>作者</translation>
    </message>
    <message>
        <source>Website</source>
        <translation>网站</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Plug-ins</source>
        <translation>插件</translation>
    </message>
    <message>
        <source>Plug-in files</source>
        <translation>插件文件</translation>
    </message>
    <message>
        <source>The files that were found in the plug-in directories</source>
        <translation>在插件目录中找到的文件</translation>
    </message>
    <message>
        <source>Details of the selected plug-in</source>
        <translation>选中插件的详细信息</translation>
    </message>
    <message>
        <source>%1 (not used)</source>
        <translation>%1（未使用）</translation>
    </message>
    <message>
        <source>No plug-in was found.</source>
        <translation>未找到插件。</translation>
    </message>
    <message>
        <source>Caution</source>
        <translation>注意</translation>
    </message>
</context>
<context>
    <name>RealCameras</name>
    <message>
        <source>&amp;Search...</source>
        <translation>搜索(&amp;S)...</translation>
    </message>
    <message>
        <source>&amp;Add by address...</source>
        <translation>按地址添加(&amp;A)...</translation>
    </message>
    <message>
        <source>Connecting to %1</source>
        <translation>正在连接 %1</translation>
    </message>
    <message>
        <source>Add a camera</source>
        <translation>添加相机</translation>
    </message>
    <message>
        <source>Address, such as gev:192.168.0.5 (GigE Vision) or usb:SERIAL (USB3 Vision):</source>
        <translation>地址，例如 gev:192.168.0.5（GigE Vision）或 usb:序列号（USB3 Vision）：</translation>
    </message>
    <message>
        <source>Searching for cameras on all networks and the USB</source>
        <translation>正在所有网络和 USB 上搜索相机</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>No camera answers.</source>
        <translation>没有相机应答。</translation>
    </message>
    <message>
        <source>These cameras answer. Open one:</source>
        <translation>以下相机已应答。选择要打开的相机：</translation>
    </message>
</context>
<context>
    <name>ShortcutsDialog</name>
    <message>
        <source>Shortcuts</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>操作</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>按键</translation>
    </message>
</context>
<context>
    <name>Viewer</name>
    <message>
        <source>The settings file was damaged and is now %1; the viewer begins with defaults</source>
        <translation>设置文件已损坏，现更名为 %1；查看器使用默认设置启动</translation>
    </message>
    <message>
        <source>There is no plug-in directory %1</source>
        <translation>没有插件目录 %1</translation>
    </message>
    <message>
        <source>%1 could not be opened</source>
        <translation>无法打开 %1</translation>
    </message>
    <message>
        <source>The settings could not be saved in %1</source>
        <translation>无法将设置保存到 %1</translation>
    </message>
    <message>
        <source>No plug-in has a &quot;Start All&quot; button</source>
        <translation>没有插件带有“全部开始”按钮</translation>
    </message>
    <message>
        <source>Plug-in %1 is not used. %2</source>
        <translation>未使用插件 %1。%2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
</context>
</TS>
