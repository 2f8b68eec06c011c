<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>DetectedSound</name>
    <message>
        <source>guitar</source>
        <translation>吉他声</translation>
    </message>
    <message>
        <source>violin</source>
        <translation>小提琴声</translation>
    </message>
    <message>
        <source>piano</source>
        <translation>钢琴声</translation>
    </message>
    <message>
        <source>vocal</source>
        <translation>人声</translation>
    </message>
</context>
<context>
    <name>FrequencyPage</name>
    <message>
        <source>Reference A4 in hertz</source>
        <translation>标准音 A4（赫兹）</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>Reset to 440 Hz</source>
        <translation>恢复为 440 Hz</translation>
    </message>
    <message>
        <source>Stop Listening</source>
        <translation>停止聆听</translation>
    </message>
    <message>
        <source>Listen for an A</source>
        <translation>聆听 A 音</translation>
    </message>
</context>
<context>
    <name>Input</name>
    <message>
        <source>System default</source>
        <translation>系统默认</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <extracomment>%1 the chosen input&apos;s name on the sound server, which is not there now.</extracomment>
        <translation>%1（未连接）</translation>
    </message>
    <message>
        <source>The sound input the tuner listens to. While the chosen input is not connected, the tuner listens to the system default, and returns to the chosen one when it is back.</source>
        <translation>调音器聆听的声音输入。所选输入未连接时，调音器聆听系统默认输入，并在所选输入回来后回到该输入。</translation>
    </message>
</context>
<context>
    <name>InputSection</name>
    <message>
        <source>Sound Input</source>
        <translation>声音输入</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>Microphone access</source>
        <translation>麦克风权限</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Back (Esc)</source>
        <translation>返回（Esc）</translation>
    </message>
    <message>
        <source>Settings (Ctrl+,)</source>
        <translation>设置（Ctrl+,）</translation>
    </message>
    <message>
        <source>More options</source>
        <translation>更多选项</translation>
    </message>
    <message>
        <source>Enjoying Veltra?</source>
        <translation>喜欢 Veltra 吗？</translation>
    </message>
    <message>
        <source>If Veltra helps you play in tune, a rating in your software centre helps other musicians find it.</source>
        <translation>如果 Veltra 帮助你演奏得更准，请在软件中心给它评分，帮助其他音乐人找到它。</translation>
    </message>
    <message>
        <source>Rate Veltra</source>
        <translation>为 Veltra 评分</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>以后再说</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Rate this App</source>
        <translation>为本应用评分</translation>
    </message>
    <message>
        <source>More Apps</source>
        <translation>更多应用</translation>
    </message>
    <message>
        <source>Share this App</source>
        <translation>分享本应用</translation>
    </message>
    <message>
        <source>Contact Us</source>
        <translation>联系我们</translation>
    </message>
    <message>
        <source>I&apos;ve been using this great instrument tuner app by %1 called Veltra for iOS. Check it out! #tuner #ios</source>
        <extracomment>What a user shares about the app; %1 is the makers&apos; social-media handle.</extracomment>
        <translation>我一直在用 %1 出品的优秀乐器调音应用 Veltra（iOS 版）。快来试试！#tuner #ios</translation>
    </message>
    <message>
        <source>Email Unavailable</source>
        <translation>无法发送邮件</translation>
    </message>
    <message>
        <source>You cannot send emails from this device.</source>
        <translation>此设备无法发送电子邮件。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>MessageDialog</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>Picker</name>
    <message>
        <source>A₄ Frequency</source>
        <translation>A₄ 频率</translation>
    </message>
</context>
<context>
    <name>Readout</name>
    <message>
        <source>No note yet</source>
        <translation>尚未检测到音符</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The frequency heard, as &quot;440.5 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>升%1</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>降%1</translation>
    </message>
    <message>
        <source>in tune</source>
        <translation>音准</translation>
    </message>
    <message>
        <source>%1 cents flat</source>
        <extracomment>How far below the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>偏低 %1 音分</translation>
    </message>
    <message>
        <source>%1 cents sharp</source>
        <extracomment>How far above the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>偏高 %1 音分</translation>
    </message>
    <message>
        <source>%1 %2, %3, %4 hertz</source>
        <extracomment>The readout as a screen reader speaks it: %1 the note (&quot;A&quot;, &quot;C sharp&quot;), %2 its octave, %3 how far off it is (&quot;in tune&quot;, &quot;2.0 cents sharp&quot;), %4 the frequency (&quot;440.5&quot;).</extracomment>
        <translation>%1 %2，%3，%4 赫兹</translation>
    </message>
    <message>
        <source>concert %1</source>
        <extracomment>Under a transposing instrument&apos;s written note, the concert note that sounds, as &quot;concert C4&quot;.</extracomment>
        <translation>实际音高 %1</translation>
    </message>
    <message>
        <source>%1, concert %2 %3</source>
        <extracomment>The readout of a transposing instrument&apos;s written note, then the concert note that sounds: %1 the readout as above, %2 the concert note (&quot;C&quot;, &quot;B flat&quot;), %3 its octave.</extracomment>
        <translation>%1，实际音高 %2 %3</translation>
    </message>
</context>
<context>
    <name>ReferenceCapture</name>
    <message>
        <source>Play an A and hold it for a second.</source>
        <translation>请奏出一个 A 音并保持一秒。</translation>
    </message>
    <message>
        <source>Reference A set to %1 Hz.</source>
        <extracomment>%1 the new reference in whole hertz (&quot;441&quot;).</extracomment>
        <translation>参考 A 已设为 %1 Hz。</translation>
    </message>
    <message>
        <source>The A heard is %1 Hz, outside 400 to 499 Hz: the reference stays.</source>
        <extracomment>%1 the A heard, in whole hertz (&quot;510&quot;); the reference is kept between 400 and 499 Hz.</extracomment>
        <translation>听到的 A 为 %1 Hz，超出 400 至 499 Hz：参考音保持不变。</translation>
    </message>
    <message>
        <source>That note is %1 cents from an A. Play an A and try again.</source>
        <extracomment>%1 how far the steady note was from the nearest A, in cents (&quot;98.0&quot;).</extracomment>
        <translation>该音与 A 相差 %1 音分。请奏出一个 A 音后重试。</translation>
    </message>
    <message>
        <source>No steady A heard. Play an A and hold it for a second.</source>
        <translation>没有听到稳定的 A 音。请奏出一个 A 音并保持一秒。</translation>
    </message>
</context>
<context>
    <name>ScalaImportButton</name>
    <message>
        <source>Choose a Scala File</source>
        <extracomment>The title of the file chooser that imports a scale.</extracomment>
        <translation>选择 Scala 文件</translation>
    </message>
    <message>
        <source>Scala scales (*.scl)</source>
        <extracomment>The file chooser&apos;s filters: Scala&apos;s scale files, then every file.</extracomment>
        <translation>Scala 音阶 (*.scl)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
</context>
<context>
    <name>ScreenSaver</name>
    <message>
        <source>Tuning</source>
        <translation>正在调音</translation>
    </message>
</context>
<context>
    <name>SelectSoundsPage</name>
    <message>
        <source>The readout follows the pitch only while one of the checked sounds is heard.</source>
        <translation>仅在听到所勾选的声音之一时，读数才跟随音高。</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>The frequency of the A above middle C to be used as the reference for tuning.</source>
        <translation>用作调音基准的中央 C 之上 A 音的频率（标准音高）。</translation>
    </message>
    <message>
        <source>Display a sine tone generator in the main view.</source>
        <translation>在主界面显示正弦波参考音发生器。</translation>
    </message>
    <message>
        <source>When enabled, the screen turns green when in tune.</source>
        <translation>开启后，音准时屏幕会变成绿色。</translation>
    </message>
    <message>
        <source>When enabled, only the enharmonic sharps are displayed.</source>
        <translation>开启后，等音只显示为升号。</translation>
    </message>
    <message>
        <source>When enabled, the live graph is continuous. When disabled, the graph is plotted only when sound is detected, similar to the older versions of Veltra.</source>
        <translation>开启后，实时曲线连续绘制。关闭后，只在检测到声音时绘制，与旧版 Veltra 相同。</translation>
    </message>
    <message>
        <source>The width of the center green bar that is considered in tune.</source>
        <translation>中间绿色区域的宽度，此范围内视为音准。</translation>
    </message>
    <message>
        <source>A lower latency works great when you need faster pitch detection (e.g. vocal practice). By using a higher latency, pitch detection will not respond to momentary unintended sounds and noise (ideal for instrument tuning).</source>
        <translation>响应较快时音高检测更迅速（如声乐练习）。响应较稳时，音高检测不会理会短暂的意外声音和噪音（适合乐器调音）。</translation>
    </message>
    <message>
        <source>Highlights piano key corresponding to the current pitch.</source>
        <translation>高亮显示与当前音高对应的钢琴键。</translation>
    </message>
    <message>
        <source>Thickness of the line used in the live pitch graph.</source>
        <translation>实时音高曲线的线条粗细。</translation>
    </message>
    <message>
        <source>This feature is very helpful for live situations where time needs to be kept track of.</source>
        <translation>在需要留意时间的现场演出中非常实用。</translation>
    </message>
    <message>
        <source>Use machine learning to enable pitch detection only when certain instruments or vocal sounds are detected.</source>
        <translation>使用机器学习，仅在检测到特定乐器或人声时才进行音高检测。</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The reference frequency in whole hertz, as &quot;440 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>Selected Sounds: %1.</source>
        <extracomment>%1 is the list of the sounds chosen, as &quot;Guitar and Piano&quot;.</extracomment>
        <translation>已选声音：%1。</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Reference A₄</source>
        <translation>标准音 A₄</translation>
    </message>
    <message>
        <source>Tone Generator</source>
        <translation>参考音</translation>
    </message>
    <message>
        <source>Green Overlay</source>
        <translation>绿色提示</translation>
    </message>
    <message>
        <source>Sharps Only</source>
        <translation>仅用升号</translation>
    </message>
    <message>
        <source>Continuous Display</source>
        <translation>连续显示</translation>
    </message>
    <message>
        <source>In-Tune Bar</source>
        <translation>音准范围</translation>
    </message>
    <message>
        <source>Wide ±15¢</source>
        <translation>宽 ±15¢</translation>
    </message>
    <message>
        <source>Medium ±10¢</source>
        <translation>中 ±10¢</translation>
    </message>
    <message>
        <source>Narrow ±5¢</source>
        <translation>窄 ±5¢</translation>
    </message>
    <message>
        <source>Wide, 15 cents either side</source>
        <translation>宽，上下各 15 音分</translation>
    </message>
    <message>
        <source>Medium, 10 cents either side</source>
        <translation>中，上下各 10 音分</translation>
    </message>
    <message>
        <source>Narrow, 5 cents either side</source>
        <translation>窄，上下各 5 音分</translation>
    </message>
    <message>
        <source>Latency</source>
        <translation>响应速度</translation>
    </message>
    <message>
        <source>%1 s</source>
        <extracomment>A time in seconds, as &quot;0.25 s&quot;.</extracomment>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>Fast</source>
        <translation>快</translation>
    </message>
    <message>
        <source>Steady</source>
        <translation>稳</translation>
    </message>
    <message>
        <source>Piano Keyboard</source>
        <translation>钢琴键盘</translation>
    </message>
    <message>
        <source>Line Thickness</source>
        <translation>线条粗细</translation>
    </message>
    <message>
        <source>Thin</source>
        <translation>细</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>粗</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>时钟</translation>
    </message>
    <message>
        <source>Sound Classification</source>
        <translation>声音识别</translation>
    </message>
    <message>
        <source>Select Sounds</source>
        <translation>选择声音</translation>
    </message>
</context>
<context>
    <name>ShareDialog</name>
    <message>
        <source>Share this App</source>
        <translation>分享本应用</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>已复制</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
</context>
<context>
    <name>SoundList</name>
    <message>
        <source>Guitar</source>
        <translation>吉他</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>小提琴</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>钢琴</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>人声</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <extracomment>The last joint of a list of sounds: &quot;Guitar, Violin and Voice&quot;.</extracomment>
        <translation>%1和%2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <extracomment>Every other joint of a list of sounds: &quot;Guitar, Violin and Voice&quot;.</extracomment>
        <translation>%1、%2</translation>
    </message>
</context>
<context>
    <name>Sounds</name>
    <message>
        <source>Select Sounds</source>
        <translation>选择声音</translation>
    </message>
    <message>
        <source>Guitar</source>
        <translation>吉他</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>小提琴</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>钢琴</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>人声</translation>
    </message>
</context>
<context>
    <name>Temperament</name>
    <message>
        <source>Equal temperament</source>
        <translation>十二平均律</translation>
    </message>
    <message>
        <source>Pythagorean</source>
        <translation>五度相生律</translation>
    </message>
    <message>
        <source>Quarter-comma meantone</source>
        <translation>1/4 音差中全音律</translation>
    </message>
    <message>
        <source>Sixth-comma meantone</source>
        <translation>1/6 音差中全音律</translation>
    </message>
    <message>
        <source>Werckmeister III</source>
        <translation>韦克迈斯特 III</translation>
    </message>
    <message>
        <source>Kirnberger III</source>
        <translation>基恩伯格 III</translation>
    </message>
    <message>
        <source>Vallotti</source>
        <translation>瓦洛蒂</translation>
    </message>
    <message>
        <source>Young (1799)</source>
        <translation>杨氏律 (1799)</translation>
    </message>
    <message>
        <source>Just intonation (5-limit)</source>
        <translation>纯律 (5 限)</translation>
    </message>
    <message>
        <source>Imported scale</source>
        <translation>导入的音阶</translation>
    </message>
</context>
<context>
    <name>ToneGenerator</name>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>升%1</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>降%1</translation>
    </message>
    <message>
        <source>Play %1</source>
        <extracomment>A reference-tone button as a screen reader names it; %1 is the note, as &quot;C sharp&quot;.</extracomment>
        <translation>播放 %1</translation>
    </message>
    <message>
        <source>Octave %1</source>
        <translation>第 %1 八度</translation>
    </message>
</context>
<context>
    <name>Tuner</name>
    <message>
        <source>Microphone Access Required</source>
        <translation>需要麦克风权限</translation>
    </message>
    <message>
        <source>This app requires access to the microphone to work. Go to Settings -&gt; Privacy -&gt; Microphone and enable Veltra to give access.</source>
        <translation>此应用需要麦克风权限才能工作。请前往 设置 → 隐私 → 麦克风，允许 Veltra 访问。</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Detected %1 sound</source>
        <extracomment>%1 is the kind of sound heard: guitar, violin, piano or vocal.</extracomment>
        <translation>检测到%1</translation>
    </message>
    <message>
        <source>Listening...</source>
        <translation>正在聆听…</translation>
    </message>
    <message>
        <source>Listening paused: no sound input</source>
        <translation>聆听已暂停：没有声音输入</translation>
    </message>
</context>
<context>
    <name>TunerPage</name>
    <message>
        <source>Pitch graph</source>
        <translation>音高曲线</translation>
    </message>
    <message>
        <source>Piano keyboard</source>
        <translation>钢琴键盘</translation>
    </message>
</context>
<context>
    <name>TuningSettings</name>
    <message>
        <source>Tuning System</source>
        <translation>律制</translation>
    </message>
    <message>
        <source>Tonic</source>
        <translation>主音</translation>
    </message>
    <message>
        <source>Import Scala File…</source>
        <translation>导入 Scala 文件…</translation>
    </message>
    <message>
        <source>Path of a .scl file</source>
        <translation>.scl 文件路径</translation>
    </message>
    <message>
        <source>Instrument Key</source>
        <translation>乐器调性</translation>
    </message>
    <message>
        <source>Transposition</source>
        <translation>移调</translation>
    </message>
    <message>
        <source>C (concert)</source>
        <translation>C（实际音高）</translation>
    </message>
    <message>
        <source>This scale cannot be used: %1</source>
        <extracomment>%1 is why, in English, as &quot;line 4: the pitches must rise from the tonic to the octave&quot;.</extracomment>
        <translation>无法使用此音阶：%1</translation>
    </message>
    <message>
        <source>Equal temperament divides the octave into twelve equal semitones. A historical temperament or just intonation gives each note of the scale on the tonic its own pitch, and the tuner shows a note as in tune when it is in tune there; the reference A stays where it is. Import a Scala file (.scl) of twelve notes to tune to your own table.</source>
        <translation>十二平均律把八度分成十二个相等的半音。历史律制或纯律让以主音起始的音阶中每个音有各自的音高，调音器在该律制下音准时显示为准；参考 A 保持不变。导入一个十二音的 Scala 文件（.scl），即可按你自己的音表调音。</translation>
    </message>
    <message>
        <source>For transposing instruments: the tuner names the notes as they are written for an instrument in this key, and the tone buttons play the written notes. B♭ for clarinet and trumpet, E♭ for alto saxophone, F for horn; any other key as the semitones its written C sounds from concert C.</source>
        <translation>用于移调乐器：调音器按此调乐器的记谱音名显示，音调按钮演奏记谱音。单簧管和小号为 B♭，中音萨克斯为 E♭，圆号为 F；其他调以其记谱 C 与实际 C 相差的半音数表示。</translation>
    </message>
</context>
</TS>
