<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>AreaPager</name>
    <message>
        <source>Plot areas</source>
        <translation>图区</translation>
    </message>
</context>
<context>
    <name>CxCameraLineData</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Exporting %1 data</source>
        <translation>正在导出 %1 的数据</translation>
    </message>
    <message>
        <source>Data throughput monitor</source>
        <translation>数据吞吐量监视</translation>
    </message>
</context>
<context>
    <name>CxDataGraphForm</name>
    <message>
        <source>Data Throughput Graph</source>
        <translation>数据吞吐量图</translation>
    </message>
    <message>
        <source>Setup...</source>
        <translation>设置...</translation>
    </message>
    <message>
        <source>Start All</source>
        <translation>全部开始</translation>
    </message>
    <message>
        <source>Reset Zoom</source>
        <translation>重置缩放</translation>
    </message>
    <message>
        <source>Reset Pan</source>
        <translation>重置平移</translation>
    </message>
    <message>
        <source>Live Graph</source>
        <translation>实时图</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>Export Graph</source>
        <translation>导出图</translation>
    </message>
    <message>
        <source>Enable or disable plot:</source>
        <translation>启用或禁用曲线：</translation>
    </message>
    <message>
        <source>Export Data...</source>
        <translation>导出数据...</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>开始</translation>
    </message>
    <message>
        <source>Acq</source>
        <translation>采集</translation>
    </message>
    <message>
        <source>Testing</source>
        <translation>测试中</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>已停止</translation>
    </message>
    <message>
        <source>Testing: this tool measures the camera. Acq: the viewer itself acquires from it.</source>
        <translation>测试中：本工具正在测量该相机。采集：查看器自身正从该相机采集。</translation>
    </message>
    <message>
        <source>Mean of the frames&apos; throughputs, all frames weighing the same. A frame&apos;s throughput: its bytes by the time from its first to its last block.</source>
        <translation>各帧吞吐量的平均值，所有帧权重相同。一帧的吞吐量：其字节数除以从首块到末块的时间。</translation>
    </message>
    <message>
        <source>The slowest block of all frames: sample period by the time between two blocks.</source>
        <translation>所有帧中最慢的块：采样周期除以两块之间的时间。</translation>
    </message>
    <message>
        <source>Highest level of the camera&apos;s buffer, simulated: it is filled at the required throughput, emptied at the link&apos;s, and empty when a frame begins.</source>
        <translation>相机缓冲区的最高占用（模拟）：以所需吞吐量填充，以链路吞吐量清空，每帧开始时为空。</translation>
    </message>
    <message>
        <source>Frames in which the simulated buffer of the camera was full.</source>
        <translation>相机的模拟缓冲区被填满的帧数。</translation>
    </message>
    <message>
        <source>As the camera tells, in kB of 1000 bytes; 32768 bytes are assumed if it does not.</source>
        <translation>由相机给出，1 kB 为 1000 字节；若相机未给出，则假定为 32768 字节。</translation>
    </message>
    <message>
        <source>Frames that reached the viewer.</source>
        <translation>到达查看器的帧数。</translation>
    </message>
    <message>
        <source>Frames lost on the link.</source>
        <translation>在链路上丢失的帧数。</translation>
    </message>
    <message>
        <source>Frames dropped as they were fetched too late.</source>
        <translation>因取走过晚而被丢弃的帧数。</translation>
    </message>
    <message>
        <source>Triggers that came while the sensor was busy.</source>
        <translation>传感器忙时到来的触发次数。</translation>
    </message>
    <message>
        <source>Triggers that found the frame buffer full.</source>
        <translation>到来时帧缓冲区已满的触发次数。</translation>
    </message>
    <message>
        <source>Overflows of the frame buffer.</source>
        <translation>帧缓冲区的溢出次数。</translation>
    </message>
    <message>
        <source>The camera&apos;s count at its last frame, whatever the graph shows.</source>
        <translation>相机在最后一帧时的计数，与图中显示的范围无关。</translation>
    </message>
    <message>
        <source>Frames from %1 s to %2 s: the visible %3 s to %4 s and a margin of %5 s on either side.</source>
        <translation>%1 s 至 %2 s 的帧：可见的 %3 s 至 %4 s，两侧各加 %5 s 余量。</translation>
    </message>
    <message>
        <source>no frame in this range</source>
        <translation>此范围内没有帧</translation>
    </message>
    <message>
        <source>This measurement: %1 missing frames, longest time without a frame %2 s.</source>
        <translation>本次测量：缺失 %1 帧，最长无帧时间 %2 s。</translation>
    </message>
    <message>
        <source>The camera&apos;s clock is %1 ppm fast against this computer&apos;s.</source>
        <translation>相机时钟比本机时钟快 %1 ppm。</translation>
    </message>
    <message>
        <source>no frame for %1 s</source>
        <translation>已有 %1 s 没有帧</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>相机</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Data gap measurement status</source>
        <translation>数据间隙测量的状态</translation>
    </message>
    <message>
        <source>Data Format</source>
        <translation>数据格式</translation>
    </message>
    <message>
        <source>Output data format.</source>
        <translation>输出数据格式。</translation>
    </message>
    <message>
        <source>Measure</source>
        <translation>测量</translation>
    </message>
    <message>
        <source>Start/Stop Measurement</source>
        <translation>开始/停止测量</translation>
    </message>
    <message>
        <source>Transferred</source>
        <translation>已传输</translation>
    </message>
    <message>
        <source>Number of transferred frames</source>
        <translation>已传输的帧数</translation>
    </message>
    <message>
        <source>Transport skip</source>
        <translation>传输跳帧</translation>
    </message>
    <message>
        <source>Number of skipped frames on transport layer</source>
        <translation>传输层跳过的帧数</translation>
    </message>
    <message>
        <source>API skip</source>
        <translation>API 跳帧</translation>
    </message>
    <message>
        <source>Number of skipped frames on API layer</source>
        <translation>API 层跳过的帧数</translation>
    </message>
    <message>
        <source>Missed trg. overlap</source>
        <translation>漏触发（重叠）</translation>
    </message>
    <message>
        <source>Number of missed triggers due to overlap</source>
        <translation>因重叠而错过的触发次数</translation>
    </message>
    <message>
        <source>Missed trg overflow</source>
        <translation>漏触发（溢出）</translation>
    </message>
    <message>
        <source>Number of missed triggers due to frame buffer full</source>
        <translation>因帧缓冲区已满而错过的触发次数</translation>
    </message>
    <message>
        <source>Buffer overflow</source>
        <translation>缓冲区溢出</translation>
    </message>
    <message>
        <source>Frame buffer full counter</source>
        <translation>帧缓冲区已满计数</translation>
    </message>
    <message>
        <source>Graph</source>
        <translation>图</translation>
    </message>
    <message>
        <source>Enable/Disable plotting of measured data</source>
        <translation>启用/禁用测量数据的绘制</translation>
    </message>
    <message>
        <source>Avg throughput</source>
        <translation>平均吞吐量</translation>
    </message>
    <message>
        <source>Average data rate</source>
        <translation>平均数据速率</translation>
    </message>
    <message>
        <source>Min throughput</source>
        <translation>最小吞吐量</translation>
    </message>
    <message>
        <source>Minimum data rate in whole data set</source>
        <translation>全部数据中的最小数据速率</translation>
    </message>
    <message>
        <source>Max buffer level</source>
        <translation>最高缓冲占用</translation>
    </message>
    <message>
        <source>Internal camera buffer fill percentage</source>
        <translation>相机内部缓冲区占用百分比</translation>
    </message>
    <message>
        <source>Buffer overflow count</source>
        <translation>缓冲溢出次数</translation>
    </message>
    <message>
        <source>Number of times internal camera buffer was totally filled</source>
        <translation>相机内部缓冲区被完全填满的次数</translation>
    </message>
    <message>
        <source>Export data</source>
        <translation>导出数据</translation>
    </message>
    <message>
        <source>Export data to .csv report</source>
        <translation>将数据导出为 .csv 报告</translation>
    </message>
    <message>
        <source>Required throughput</source>
        <translation>所需吞吐量</translation>
    </message>
    <message>
        <source>Expected sensor speed for evaluation</source>
        <translation>用于评估的预期传感器速度</translation>
    </message>
    <message>
        <source>Camera buffer size</source>
        <translation>相机缓冲区大小</translation>
    </message>
    <message>
        <source>Size of internal camera buffer in bytes</source>
        <translation>相机内部缓冲区大小（字节）</translation>
    </message>
    <message>
        <source>Y Axis scaling</source>
        <translation>Y 轴缩放</translation>
    </message>
    <message>
        <source>Enable/Disable Y axis automatic scaling or set manual axis range</source>
        <translation>启用/禁用 Y 轴自动缩放，或手动设置轴范围</translation>
    </message>
    <message>
        <source>Average
throughput</source>
        <translation>平均吞吐量</translation>
    </message>
    <message>
        <source>Minimum
throughput</source>
        <translation>最小吞吐量</translation>
    </message>
    <message>
        <source>Buffer overflow
count</source>
        <translation>缓冲溢出次数</translation>
    </message>
    <message>
        <source>Required
throughput</source>
        <translation>所需吞吐量</translation>
    </message>
    <message>
        <source>Camera buffer
size</source>
        <translation>相机缓冲区大小</translation>
    </message>
    <message>
        <source>Select Output File</source>
        <translation>选择输出文件</translation>
    </message>
    <message>
        <source>Export Measured Data</source>
        <translation>导出测量数据</translation>
    </message>
    <message>
        <source>No measured data to export.</source>
        <translation>没有可导出的测量数据。</translation>
    </message>
    <message>
        <source>Select Output File for Measured Data</source>
        <translation>选择测量数据的输出文件</translation>
    </message>
    <message>
        <source>CSV files (*.csv)</source>
        <translation>CSV files (*.csv)</translation>
    </message>
    <message>
        <source>The report is not complete.
%1: %2</source>
        <translation>报告不完整。
%1：%2</translation>
    </message>
    <message>
        <source>Stopping measurement</source>
        <translation>正在停止测量</translation>
    </message>
    <message>
        <source>Stopping camera %1...</source>
        <translation>正在停止相机 %1...</translation>
    </message>
    <message>
        <source>Starting measurement</source>
        <translation>正在开始测量</translation>
    </message>
    <message>
        <source>Starting camera %1...</source>
        <translation>正在启动相机 %1...</translation>
    </message>
    <message>
        <source>Stop All</source>
        <translation>全部停止</translation>
    </message>
    <message>
        <source>Failed to start measurement</source>
        <translation>无法开始测量</translation>
    </message>
    <message>
        <source>Camera %1 does not support 
 data throughput analysis in Kestrova.</source>
        <translation>相机 %1 不支持 
 Kestrova 中的数据吞吐量分析。</translation>
    </message>
    <message>
        <source>Counter value</source>
        <translation>计数值</translation>
    </message>
    <message>
        <source>Avg. rate [MB/s]</source>
        <translation>平均速率 [MB/s]</translation>
    </message>
    <message>
        <source>Buffer filled [%]</source>
        <translation>缓冲占用 [%]</translation>
    </message>
    <message>
        <source>The data rate of the sensor in MB/s, against which the buffer is simulated. Checked: as the camera tells.</source>
        <translation>传感器的数据速率（MB/s），用于模拟缓冲区。勾选：由相机给出。</translation>
    </message>
    <message>
        <source>Start All, Stop All</source>
        <translation>全部开始，全部停止</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>Earlier</source>
        <translation>向前</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>向后</translation>
    </message>
    <message>
        <source>One plot area up</source>
        <translation>上移一个图</translation>
    </message>
    <message>
        <source>One plot area down</source>
        <translation>下移一个图</translation>
    </message>
    <message>
        <source>First plot area alone, or all</source>
        <translation>仅显示第一个图或全部</translation>
    </message>
    <message>
        <source>All plot areas</source>
        <translation>全部图</translation>
    </message>
    <message>
        <source>Show all graphs</source>
        <translation>显示全部图</translation>
    </message>
    <message>
        <source>Hide all graphs</source>
        <translation>隐藏全部图</translation>
    </message>
    <message>
        <source>Save all plot areas...</source>
        <translation>保存全部图...</translation>
    </message>
    <message>
        <source>%1 exists already. Replace it?</source>
        <translation>%1 已存在。要替换吗？</translation>
    </message>
    <message>
        <source>The image cannot be written.
%1: %2</source>
        <translation>无法写入图像。
%1：%2</translation>
    </message>
    <message>
        <source>Previous plot areas</source>
        <translation>前面的图</translation>
    </message>
    <message>
        <source>Next plot areas</source>
        <translation>后面的图</translation>
    </message>
    <message>
        <source>The visible time range holds no measured data. Write a report without a line?</source>
        <translation>可见时间范围内没有测量数据。要写入没有数据行的报告吗？</translation>
    </message>
    <message>
        <source>Time of day on the time axes</source>
        <translation>时间轴上显示时刻</translation>
    </message>
    <message>
        <source>Blocks of %1 bytes, the sample period: the shorter they are, the lower the minimum can be.</source>
        <translation>数据块为 %1 字节（采样周期）：数据块越短，最小值可能越低。</translation>
    </message>
    <message>
        <source>The ends of the value axis. Checked: they follow the curve, and are empty while its plot area is out of view.</source>
        <translation>数值轴的两端。勾选时：跟随曲线；其图区不在视图中时为空。</translation>
    </message>
    <message>
        <source>This camera does not tell: %1 bytes are assumed.</source>
        <translation>该相机未给出：假定为 %1 字节。</translation>
    </message>
</context>
<context>
    <name>CxDataGraphSetupDlg</name>
    <message>
        <source>Data Throughput Test Setup</source>
        <translation>数据吞吐量测试设置</translation>
    </message>
    <message>
        <source>Measurement</source>
        <translation>测量</translation>
    </message>
    <message>
        <source>million samples per camera</source>
        <translation>百万采样/相机</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>字节</translation>
    </message>
    <message>
        <source>Capacity:</source>
        <translation>容量：</translation>
    </message>
    <message>
        <source>Sample period:</source>
        <translation>采样周期：</translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation>模式：</translation>
    </message>
    <message>
        <source>Data Throughput measurement</source>
        <translation>数据吞吐量测量</translation>
    </message>
    <message>
        <source>Standard Sensor Acquisition</source>
        <translation>标准传感器采集</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>显示</translation>
    </message>
    <message>
        <source>Refresh Period:</source>
        <translation>刷新周期：</translation>
    </message>
    <message>
        <source>seconds</source>
        <translation>秒</translation>
    </message>
    <message>
        <source>%1: not known before its first measurement</source>
        <translation>%1：首次测量前未知</translation>
    </message>
    <message>
        <source>%1: the last %2 at the present rate</source>
        <translation>%1：按当前速率为最近 %2</translation>
    </message>
    <message>
        <source>%1: the last %2 at the required throughput</source>
        <translation>%1：按所需吞吐量为最近 %2</translation>
    </message>
    <message>
        <source>Kept are the last %1 at the present rate: capacity %2 samples.</source>
        <translation>按当前速率保留最近 %1：容量 %2 个采样。</translation>
    </message>
    <message>
        <source>Kept are the last %1 samples.</source>
        <translation>保留最近 %1 个采样。</translation>
    </message>
    <message>
        <source>%1 samples take up to %2 of memory per camera, then the oldest are dropped.</source>
        <translation>%1 个采样每台相机最多占用 %2 内存，之后丢弃最早的采样。</translation>
    </message>
    <message>
        <source>and %1 other cameras</source>
        <translation>以及另外 %1 台相机</translation>
    </message>
</context>
<context>
    <name>CxDataThroughputGraphPlugin</name>
    <message>
        <source>Data Throughput Graph Tool</source>
        <translation>数据吞吐量图工具</translation>
    </message>
    <message>
        <source>Measures the available bandwidth during time and shows results in graph.</source>
        <translation>测量一段时间内的可用带宽，并以图形显示结果。</translation>
    </message>
</context>
<context>
    <name>Diagnosis</name>
    <message>
        <source>The sensor asks for more than the link gives: it carries %1 MB/s on average, and %2 MB/s are required. A slower connection than meant, or a hub or switch on the way, may be the cause.</source>
        <translation>传感器要求的速率超过链路所能提供的：平均传输 %1 MB/s，而需要 %2 MB/s。可能的原因是连接速度低于预期，或中间有集线器或交换机。</translation>
    </message>
    <message>
        <source>%1 cameras share the link %2, which is full with %3 of %4 MB/s. This camera has %5 MB/s of it, the busiest one %6 MB/s.</source>
        <translation>%1 台相机共享链路 %2，该链路已满：%4 MB/s 中已用 %3 MB/s。本相机占 %5 MB/s，最繁忙的相机占 %6 MB/s。</translation>
    </message>
    <message>
        <source>The link has short stalls, which the camera&apos;s buffer holds: the slowest block took %1 ms, the buffer was filled to %2 %.</source>
        <translation>链路有短暂停顿，相机缓冲区可以承受：最慢的数据块用时 %1 ms，缓冲区最高填充到 %2 %。</translation>
    </message>
    <message>
        <source>The camera&apos;s clock drifts by %1 ppm against this machine&apos;s. One of them may be bad; throughputs are wrong by as much.</source>
        <translation>相机时钟相对本机时钟漂移 %1 ppm。其中之一可能有问题；吞吐量也有同样大小的误差。</translation>
    </message>
    <message>
        <source>Only the last %1 s of %2 s are kept. What went wrong may lie before them; a greater capacity keeps more.</source>
        <translation>%2 s 中只保留了最后 %1 s。问题可能发生在此之前；增大容量可保留更多。</translation>
    </message>
    <message>
        <source>No frame came for up to %1 s, %2 s in all. Triggers may be missing, or the camera or its link may have stopped.</source>
        <translation>最长 %1 s 没有收到帧，总计 %2 s。可能缺少触发，或相机或其链路已停止。</translation>
    </message>
    <message>
        <source>The link may stall for longer than the camera&apos;s buffer can hold, though the average is enough.</source>
        <translation>平均值足够，但链路停顿的时间可能超过相机缓冲区所能承受的时间。</translation>
    </message>
    <message>
        <source>One frame would have overflowed it.</source>
        <translation>有 1 帧会使其溢出。</translation>
    </message>
    <message numerus="yes">
        <source>%n frames would have overflowed it.</source>
        <translation>
            <numerusform>有 %n 帧会使其溢出。</numerusform>
        </translation>
    </message>
    <message>
        <source>The slowest block took %1 ms.</source>
        <translation>最慢的数据块用时 %1 ms。</translation>
    </message>
    <message>
        <source>One frame was lost on the link.</source>
        <translation>有 1 帧在链路上丢失。</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost on the link.</source>
        <translation>
            <numerusform>有 %n 帧在链路上丢失。</numerusform>
        </translation>
    </message>
    <message>
        <source>A bad cable or plug, interference, or a switch that drops packets may be the cause.</source>
        <translation>原因可能是线缆或接头不良、干扰，或交换机丢弃数据包。</translation>
    </message>
    <message>
        <source>One frame was fetched too late.</source>
        <translation>有 1 帧取走得太晚。</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were fetched too late.</source>
        <translation>
            <numerusform>有 %n 帧取走得太晚。</numerusform>
        </translation>
    </message>
    <message>
        <source>This machine may be too busy or too slow.</source>
        <translation>本机可能过于繁忙或速度过慢。</translation>
    </message>
    <message>
        <source>One frame is missing.</source>
        <translation>缺少 1 帧。</translation>
    </message>
    <message numerus="yes">
        <source>%n frames are missing.</source>
        <translation>
            <numerusform>缺少 %n 帧。</numerusform>
        </translation>
    </message>
    <message>
        <source>Frames may be lost on the link or fetched too late; the camera&apos;s counters tell which.</source>
        <translation>帧可能在链路上丢失，也可能取走得太晚；相机的计数器可以说明是哪一种。</translation>
    </message>
    <message>
        <source>One trigger came while the sensor was busy.</source>
        <translation>有 1 个触发在传感器忙时到来。</translation>
    </message>
    <message numerus="yes">
        <source>%n triggers came while the sensor was busy.</source>
        <translation>
            <numerusform>有 %n 个触发在传感器忙时到来。</numerusform>
        </translation>
    </message>
    <message>
        <source>Triggers may come faster than it exposes and reads out.</source>
        <translation>触发可能快于传感器曝光和读出的速度。</translation>
    </message>
    <message>
        <source>Once the camera&apos;s buffer was full.</source>
        <translation>相机缓冲区曾满 1 次。</translation>
    </message>
    <message numerus="yes">
        <source>%n times the camera&apos;s buffer was full.</source>
        <translation>
            <numerusform>相机缓冲区曾满 %n 次。</numerusform>
        </translation>
    </message>
    <message>
        <source>The triggers may be too fast for the link, or the link may stall.</source>
        <translation>触发对链路来说可能过快，或链路发生停顿。</translation>
    </message>
    <message>
        <source>Counters of the camera began anew, so how far they counted is not known. The camera may have been restarted, or another program has reset them.</source>
        <translation>相机的计数器重新开始计数，因此不知道其计数了多少。相机可能已重新启动，或被其他程序复位。</translation>
    </message>
    <message>
        <source>No frame came for up to %1 s, %2 s in all. For %3 s of these the camera was lost: its cable, its power or the camera itself may be the cause.</source>
        <translation>最长 %1 s 没有图像，总计 %2 s。其中 %3 s 相机断开：原因可能是线缆、供电或相机本身。</translation>
    </message>
</context>
<context>
    <name>EventTexts</name>
    <message>
        <source>Start</source>
        <translation>开始</translation>
    </message>
    <message>
        <source>End</source>
        <translation>结束</translation>
    </message>
    <message>
        <source>Silence</source>
        <translation>静默</translation>
    </message>
    <message>
        <source>Missing frames</source>
        <translation>缺失帧</translation>
    </message>
    <message>
        <source>Buffer overflow</source>
        <translation>缓冲区溢出</translation>
    </message>
    <message>
        <source>%1: %2 s</source>
        <translation>%1：%2 s</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
</context>
<context>
    <name>HostDiagnosis</name>
    <message>
        <source>One frame was lost on the way to this machine.</source>
        <translation>有 1 帧在到达本机的途中丢失。</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost on the way to this machine.</source>
        <translation>
            <numerusform>有 %n 帧在到达本机的途中丢失。</numerusform>
        </translation>
    </message>
    <message>
        <source>A bad cable or plug, interference, or a switch that drops packets may be the cause.</source>
        <translation>原因可能是线缆或接头不良、干扰，或交换机丢弃数据包。</translation>
    </message>
    <message>
        <source>The camera&apos;s packets have %1 bytes, the network interface takes %2. A smaller packet size, or a larger MTU of all that is on the way, may help.</source>
        <translation>相机的数据包为 %1 字节，网络接口只接受 %2 字节。减小数据包，或增大途中所有设备的 MTU，可能有所帮助。</translation>
    </message>
    <message>
        <source>The network interface itself dropped packets meanwhile: %1. A larger ring of the interface (ethtool -G), or fewer and larger packets, may help.</source>
        <translation>其间网络接口自身丢弃了数据包：%1。增大接口的环形缓冲区（ethtool -G），或使用更少而更大的数据包，可能有所帮助。</translation>
    </message>
    <message>
        <source>%1 cameras share the interface %2. Together they may overrun it or a switch on the way; a pause between their packets may help.</source>
        <translation>%1 台相机共用接口 %2。它们合起来可能使该接口或途中的交换机过载；在数据包之间加入间隔可能有所帮助。</translation>
    </message>
    <message>
        <source>One frame was lost because the socket&apos;s buffer was full.</source>
        <translation>有 1 帧因套接字缓冲区已满而丢失。</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost because the socket&apos;s buffer was full.</source>
        <translation>
            <numerusform>有 %n 帧因套接字缓冲区已满而丢失。</numerusform>
        </translation>
    </message>
    <message>
        <source>It may hold %1 bytes, a frame has %2: sysctl net.core.rmem_max=%3 may help.</source>
        <translation>它最多容纳 %1 字节，而一帧有 %2 字节：sysctl net.core.rmem_max=%3 可能有所帮助。</translation>
    </message>
    <message>
        <source>This machine may be too busy to empty it.</source>
        <translation>本机可能过于繁忙，来不及清空它。</translation>
    </message>
    <message>
        <source>One frame was lost for want of a buffer.</source>
        <translation>有 1 帧因没有空闲缓冲而丢失。</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost for want of a buffer.</source>
        <translation>
            <numerusform>有 %n 帧因没有空闲缓冲而丢失。</numerusform>
        </translation>
    </message>
    <message>
        <source>Who reads the frames may be too slow.</source>
        <translation>读取帧的一方可能过慢。</translation>
    </message>
    <message>
        <source>One frame was lost because its packets came too late.</source>
        <translation>有 1 帧因其数据包到达过迟而丢失。</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost because their packets came too late.</source>
        <translation>
            <numerusform>有 %n 帧因其数据包到达过迟而丢失。</numerusform>
        </translation>
    </message>
    <message>
        <source>The camera or a switch may have held them back.</source>
        <translation>相机或交换机可能延迟了它们。</translation>
    </message>
    <message>
        <source>One frame was lost on this machine, and nothing tells why.</source>
        <translation>有 1 帧在本机丢失，原因不明。</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost on this machine, and nothing tells why.</source>
        <translation>
            <numerusform>有 %n 帧在本机丢失，原因不明。</numerusform>
        </translation>
    </message>
    <message>
        <source>One frame was lost, nobody knows where.</source>
        <translation>有 1 帧丢失，位置未知。</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost, nobody knows where.</source>
        <translation>
            <numerusform>有 %n 帧丢失，位置未知。</numerusform>
        </translation>
    </message>
    <message>
        <source>The tap that sees their packets was not there or did not keep up.</source>
        <translation>观察数据包的 tap 程序未运行或跟不上。</translation>
    </message>
    <message>
        <source>The processors of this machine were busy %1 % of the time.</source>
        <translation>本机处理器有 %1 % 的时间处于繁忙状态。</translation>
    </message>
    <message>
        <source>The system lends USB transfers %1 MiB, this camera&apos;s buffers need %2 MiB. A larger usbcore.usbfs_memory_mb may help.</source>
        <translation>系统为 USB 传输提供 %1 MiB，而本相机的缓冲需要 %2 MiB。增大 usbcore.usbfs_memory_mb 可能有所帮助。</translation>
    </message>
    <message>
        <source>Data arrived %1 bytes at a time: with a sample period of %2 bytes the lowest throughput is this machine&apos;s, not the link&apos;s. %3 bytes or more tell of the link.</source>
        <translation>数据每次到达 %1 字节：采样周期为 %2 字节时，最低吞吐量反映的是本机而非链路。%3 字节或更大才能反映链路。</translation>
    </message>
</context>
<context>
    <name>Tracer</name>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
</context>
</TS>
