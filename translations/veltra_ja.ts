<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
<context>
    <name>DetectedSound</name>
    <message>
        <source>guitar</source>
        <translation>ギターの音</translation>
    </message>
    <message>
        <source>violin</source>
        <translation>バイオリンの音</translation>
    </message>
    <message>
        <source>piano</source>
        <translation>ピアノの音</translation>
    </message>
    <message>
        <source>vocal</source>
        <translation>歌声</translation>
    </message>
</context>
<context>
    <name>FrequencyPage</name>
    <message>
        <source>Reference A4 in hertz</source>
        <translation>基準ピッチ A4（ヘルツ）</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>Reset to 440 Hz</source>
        <translation>440 Hz に戻す</translation>
    </message>
    <message>
        <source>Stop Listening</source>
        <translation>聞き取りをやめる</translation>
    </message>
    <message>
        <source>Listen for an A</source>
        <translation>A の音を聞き取る</translation>
    </message>
</context>
<context>
    <name>Input</name>
    <message>
        <source>System default</source>
        <translation>システムの既定</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <extracomment>%1 the chosen input&apos;s name on the sound server, which is not there now.</extracomment>
        <translation>%1（未接続）</translation>
    </message>
    <message>
        <source>The sound input the tuner listens to. While the chosen input is not connected, the tuner listens to the system default, and returns to the chosen one when it is back.</source>
        <translation>チューナーが聞き取る音声入力です。選んだ入力が接続されていない間はシステムの既定の入力を聞き取り、戻ってきたら選んだ入力に戻ります。</translation>
    </message>
</context>
<context>
    <name>InputSection</name>
    <message>
        <source>Sound Input</source>
        <translation>音声入力</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Back</source>
        <translation>戻る</translation>
    </message>
    <message>
        <source>Microphone access</source>
        <translation>マイクへのアクセス</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Back (Esc)</source>
        <translation>戻る（Esc）</translation>
    </message>
    <message>
        <source>Settings (Ctrl+,)</source>
        <translation>設定（Ctrl+,）</translation>
    </message>
    <message>
        <source>More options</source>
        <translation>その他のオプション</translation>
    </message>
    <message>
        <source>Enjoying Veltra?</source>
        <translation>Veltra を気に入っていただけましたか？</translation>
    </message>
    <message>
        <source>If Veltra helps you play in tune, a rating in your software centre helps other musicians find it.</source>
        <translation>Veltra で正しい音程で演奏できているなら、ソフトウェアセンターでの評価が他のミュージシャンの助けになります。</translation>
    </message>
    <message>
        <source>Rate Veltra</source>
        <translation>Veltra を評価</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>後で</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Rate this App</source>
        <translation>このアプリを評価</translation>
    </message>
    <message>
        <source>More Apps</source>
        <translation>ほかのアプリ</translation>
    </message>
    <message>
        <source>Share this App</source>
        <translation>このアプリを共有</translation>
    </message>
    <message>
        <source>Contact Us</source>
        <translation>お問い合わせ</translation>
    </message>
    <message>
        <source>I&apos;ve been using this great instrument tuner app by %1 called Veltra for iOS. Check it out! #tuner #ios</source>
        <extracomment>What a user shares about the app; %1 is the makers&apos; social-media handle.</extracomment>
        <translation>%1 の楽器用チューナーアプリ Veltra（iOS 版）を使っています。おすすめです！ #tuner #ios</translation>
    </message>
    <message>
        <source>Email Unavailable</source>
        <translation>メールを利用できません</translation>
    </message>
    <message>
        <source>You cannot send emails from this device.</source>
        <translation>このデバイスからはメールを送信できません。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
<context>
    <name>MessageDialog</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Picker</name>
    <message>
        <source>A₄ Frequency</source>
        <translation>A₄ の周波数</translation>
    </message>
</context>
<context>
    <name>Readout</name>
    <message>
        <source>No note yet</source>
        <translation>まだ音がありません</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The frequency heard, as &quot;440.5 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1シャープ</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1フラット</translation>
    </message>
    <message>
        <source>in tune</source>
        <translation>合っています</translation>
    </message>
    <message>
        <source>%1 cents flat</source>
        <extracomment>How far below the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 セント低い</translation>
    </message>
    <message>
        <source>%1 cents sharp</source>
        <extracomment>How far above the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 セント高い</translation>
    </message>
    <message>
        <source>%1 %2, %3, %4 hertz</source>
        <extracomment>The readout as a screen reader speaks it: %1 the note (&quot;A&quot;, &quot;C sharp&quot;), %2 its octave, %3 how far off it is (&quot;in tune&quot;, &quot;2.0 cents sharp&quot;), %4 the frequency (&quot;440.5&quot;).</extracomment>
        <translation>%1 %2、%3、%4 ヘルツ</translation>
    </message>
    <message>
        <source>concert %1</source>
        <extracomment>Under a transposing instrument&apos;s written note, the concert note that sounds, as &quot;concert C4&quot;.</extracomment>
        <translation>実音 %1</translation>
    </message>
    <message>
        <source>%1, concert %2 %3</source>
        <extracomment>The readout of a transposing instrument&apos;s written note, then the concert note that sounds: %1 the readout as above, %2 the concert note (&quot;C&quot;, &quot;B flat&quot;), %3 its octave.</extracomment>
        <translation>%1、実音 %2 %3</translation>
    </message>
</context>
<context>
    <name>ReferenceCapture</name>
    <message>
        <source>Play an A and hold it for a second.</source>
        <translation>A の音を鳴らして 1 秒間伸ばしてください。</translation>
    </message>
    <message>
        <source>Reference A set to %1 Hz.</source>
        <extracomment>%1 the new reference in whole hertz (&quot;441&quot;).</extracomment>
        <translation>基準の A を %1 Hz に設定しました。</translation>
    </message>
    <message>
        <source>The A heard is %1 Hz, outside 400 to 499 Hz: the reference stays.</source>
        <extracomment>%1 the A heard, in whole hertz (&quot;510&quot;); the reference is kept between 400 and 499 Hz.</extracomment>
        <translation>聞こえた A は %1 Hz で、400～499 Hz の範囲外です。基準は変わりません。</translation>
    </message>
    <message>
        <source>That note is %1 cents from an A. Play an A and try again.</source>
        <extracomment>%1 how far the steady note was from the nearest A, in cents (&quot;98.0&quot;).</extracomment>
        <translation>その音は A から %1 セント離れています。A の音を鳴らしてもう一度試してください。</translation>
    </message>
    <message>
        <source>No steady A heard. Play an A and hold it for a second.</source>
        <translation>安定した A が聞こえませんでした。A の音を鳴らして 1 秒間伸ばしてください。</translation>
    </message>
</context>
<context>
    <name>ScalaImportButton</name>
    <message>
        <source>Choose a Scala File</source>
        <extracomment>The title of the file chooser that imports a scale.</extracomment>
        <translation>Scala ファイルを選択</translation>
    </message>
    <message>
        <source>Scala scales (*.scl)</source>
        <extracomment>The file chooser&apos;s filters: Scala&apos;s scale files, then every file.</extracomment>
        <translation>Scala 音階 (*.scl)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>すべてのファイル (*)</translation>
    </message>
</context>
<context>
    <name>ScreenSaver</name>
    <message>
        <source>Tuning</source>
        <translation>チューニング中</translation>
    </message>
</context>
<context>
    <name>SelectSoundsPage</name>
    <message>
        <source>The readout follows the pitch only while one of the checked sounds is heard.</source>
        <translation>チェックした種類の音が聞こえている間だけ、表示が音程を追います。</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>The frequency of the A above middle C to be used as the reference for tuning.</source>
        <translation>チューニングの基準にする、中央 C の上の A の周波数（基準ピッチ）です。</translation>
    </message>
    <message>
        <source>Display a sine tone generator in the main view.</source>
        <translation>メイン画面に正弦波の基準音ボタンを表示します。</translation>
    </message>
    <message>
        <source>When enabled, the screen turns green when in tune.</source>
        <translation>オンにすると、音程が合ったときに画面が緑色になります。</translation>
    </message>
    <message>
        <source>When enabled, only the enharmonic sharps are displayed.</source>
        <translation>オンにすると、異名同音はシャープだけで表示します。</translation>
    </message>
    <message>
        <source>When enabled, the live graph is continuous. When disabled, the graph is plotted only when sound is detected, similar to the older versions of Veltra.</source>
        <translation>オンにすると、グラフを途切れなく描きます。オフにすると、以前の Veltra と同じく、音が検出されている間だけ描きます。</translation>
    </message>
    <message>
        <source>The width of the center green bar that is considered in tune.</source>
        <translation>音程が合っているとみなす、中央の緑の帯の幅です。</translation>
    </message>
    <message>
        <source>A lower latency works great when you need faster pitch detection (e.g. vocal practice). By using a higher latency, pitch detection will not respond to momentary unintended sounds and noise (ideal for instrument tuning).</source>
        <translation>反応を速くすると、音程をすばやく検出できます（歌の練習など）。安定寄りにすると、一瞬の意図しない音や雑音に反応しなくなります（楽器のチューニングに最適）。</translation>
    </message>
    <message>
        <source>Highlights piano key corresponding to the current pitch.</source>
        <translation>現在の音程に対応する鍵盤を強調表示します。</translation>
    </message>
    <message>
        <source>Thickness of the line used in the live pitch graph.</source>
        <translation>音程グラフの線の太さです。</translation>
    </message>
    <message>
        <source>This feature is very helpful for live situations where time needs to be kept track of.</source>
        <translation>時間を気にする必要があるライブで便利です。</translation>
    </message>
    <message>
        <source>Use machine learning to enable pitch detection only when certain instruments or vocal sounds are detected.</source>
        <translation>機械学習を使い、特定の楽器や声が聞こえたときだけ音程を検出します。</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The reference frequency in whole hertz, as &quot;440 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>Selected Sounds: %1.</source>
        <extracomment>%1 is the list of the sounds chosen, as &quot;Guitar and Piano&quot;.</extracomment>
        <translation>選択した音：%1。</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Reference A₄</source>
        <translation>基準ピッチ A₄</translation>
    </message>
    <message>
        <source>Tone Generator</source>
        <translation>基準音</translation>
    </message>
    <message>
        <source>Green Overlay</source>
        <translation>グリーン表示</translation>
    </message>
    <message>
        <source>Sharps Only</source>
        <translation>シャープのみ</translation>
    </message>
    <message>
        <source>Continuous Display</source>
        <translation>連続表示</translation>
    </message>
    <message>
        <source>In-Tune Bar</source>
        <translation>許容範囲</translation>
    </message>
    <message>
        <source>Wide ±15¢</source>
        <translation>広い ±15¢</translation>
    </message>
    <message>
        <source>Medium ±10¢</source>
        <translation>標準 ±10¢</translation>
    </message>
    <message>
        <source>Narrow ±5¢</source>
        <translation>狭い ±5¢</translation>
    </message>
    <message>
        <source>Wide, 15 cents either side</source>
        <translation>広い、上下 15 セント</translation>
    </message>
    <message>
        <source>Medium, 10 cents either side</source>
        <translation>標準、上下 10 セント</translation>
    </message>
    <message>
        <source>Narrow, 5 cents either side</source>
        <translation>狭い、上下 5 セント</translation>
    </message>
    <message>
        <source>Latency</source>
        <translation>反応速度</translation>
    </message>
    <message>
        <source>%1 s</source>
        <extracomment>A time in seconds, as &quot;0.25 s&quot;.</extracomment>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>Fast</source>
        <translation>速い</translation>
    </message>
    <message>
        <source>Steady</source>
        <translation>安定</translation>
    </message>
    <message>
        <source>Piano Keyboard</source>
        <translation>鍵盤表示</translation>
    </message>
    <message>
        <source>Line Thickness</source>
        <translation>線の太さ</translation>
    </message>
    <message>
        <source>Thin</source>
        <translation>細い</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>太い</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>時計</translation>
    </message>
    <message>
        <source>Sound Classification</source>
        <translation>音の識別</translation>
    </message>
    <message>
        <source>Select Sounds</source>
        <translation>音の種類を選ぶ</translation>
    </message>
</context>
<context>
    <name>ShareDialog</name>
    <message>
        <source>Share this App</source>
        <translation>このアプリを共有</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>コピーしました</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
</context>
<context>
    <name>SoundList</name>
    <message>
        <source>Guitar</source>
        <translation>ギター</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>バイオリン</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>ピアノ</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>声</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <extracomment>The last joint of a list of sounds: &quot;Guitar, Violin and Voice&quot;.</extracomment>
        <translation>%1と%2</translation>
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
        <translation>音の種類を選ぶ</translation>
    </message>
    <message>
        <source>Guitar</source>
        <translation>ギター</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>バイオリン</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>ピアノ</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>声</translation>
    </message>
</context>
<context>
    <name>Temperament</name>
    <message>
        <source>Equal temperament</source>
        <translation>平均律</translation>
    </message>
    <message>
        <source>Pythagorean</source>
        <translation>ピタゴラス音律</translation>
    </message>
    <message>
        <source>Quarter-comma meantone</source>
        <translation>1/4コンマ中全音律</translation>
    </message>
    <message>
        <source>Sixth-comma meantone</source>
        <translation>1/6コンマ中全音律</translation>
    </message>
    <message>
        <source>Werckmeister III</source>
        <translation>ヴェルクマイスター第3</translation>
    </message>
    <message>
        <source>Kirnberger III</source>
        <translation>キルンベルガー第3</translation>
    </message>
    <message>
        <source>Vallotti</source>
        <translation>ヴァロッティ</translation>
    </message>
    <message>
        <source>Young (1799)</source>
        <translation>ヤング (1799)</translation>
    </message>
    <message>
        <source>Just intonation (5-limit)</source>
        <translation>純正律 (5リミット)</translation>
    </message>
    <message>
        <source>Imported scale</source>
        <translation>読み込んだ音階</translation>
    </message>
</context>
<context>
    <name>ToneGenerator</name>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1シャープ</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1フラット</translation>
    </message>
    <message>
        <source>Play %1</source>
        <extracomment>A reference-tone button as a screen reader names it; %1 is the note, as &quot;C sharp&quot;.</extracomment>
        <translation>%1 を鳴らす</translation>
    </message>
    <message>
        <source>Octave %1</source>
        <translation>オクターブ %1</translation>
    </message>
</context>
<context>
    <name>Tuner</name>
    <message>
        <source>Microphone Access Required</source>
        <translation>マイクへのアクセスが必要です</translation>
    </message>
    <message>
        <source>This app requires access to the microphone to work. Go to Settings -&gt; Privacy -&gt; Microphone and enable Veltra to give access.</source>
        <translation>このアプリの動作にはマイクへのアクセスが必要です。「設定」→「プライバシー」→「マイク」で Veltra を許可してください。</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Detected %1 sound</source>
        <extracomment>%1 is the kind of sound heard: guitar, violin, piano or vocal.</extracomment>
        <translation>%1を検出</translation>
    </message>
    <message>
        <source>Listening...</source>
        <translation>聞き取り中…</translation>
    </message>
    <message>
        <source>Listening paused: no sound input</source>
        <translation>聞き取りを一時停止中：音声入力がありません</translation>
    </message>
</context>
<context>
    <name>TunerPage</name>
    <message>
        <source>Pitch graph</source>
        <translation>音程グラフ</translation>
    </message>
    <message>
        <source>Piano keyboard</source>
        <translation>鍵盤</translation>
    </message>
</context>
<context>
    <name>TuningSettings</name>
    <message>
        <source>Tuning System</source>
        <translation>音律</translation>
    </message>
    <message>
        <source>Tonic</source>
        <translation>主音</translation>
    </message>
    <message>
        <source>Import Scala File…</source>
        <translation>Scala ファイルを読み込む…</translation>
    </message>
    <message>
        <source>Path of a .scl file</source>
        <translation>.scl ファイルのパス</translation>
    </message>
    <message>
        <source>Instrument Key</source>
        <translation>楽器の調</translation>
    </message>
    <message>
        <source>Transposition</source>
        <translation>移調</translation>
    </message>
    <message>
        <source>C (concert)</source>
        <translation>C (実音)</translation>
    </message>
    <message>
        <source>This scale cannot be used: %1</source>
        <extracomment>%1 is why, in English, as &quot;line 4: the pitches must rise from the tonic to the octave&quot;.</extracomment>
        <translation>この音階は使えません: %1</translation>
    </message>
    <message>
        <source>Equal temperament divides the octave into twelve equal semitones. A historical temperament or just intonation gives each note of the scale on the tonic its own pitch, and the tuner shows a note as in tune when it is in tune there; the reference A stays where it is. Import a Scala file (.scl) of twelve notes to tune to your own table.</source>
        <translation>平均律はオクターブを12の等しい半音に分けます。歴史的音律や純正律は主音からの音階の各音にそれぞれの高さを与え、チューナーはその音律で合っている音を合っていると表示します。基準のAは変わりません。12音の Scala ファイル (.scl) を読み込むと、独自の表で調律できます。</translation>
    </message>
    <message>
        <source>For transposing instruments: the tuner names the notes as they are written for an instrument in this key, and the tone buttons play the written notes. B♭ for clarinet and trumpet, E♭ for alto saxophone, F for horn; any other key as the semitones its written C sounds from concert C.</source>
        <translation>移調楽器のために: チューナーはこの調の楽器の記譜どおりに音名を表示し、音ボタンは記譜音を鳴らします。クラリネットとトランペットは B♭、アルトサックスは E♭、ホルンは F。その他の調は、記譜の C が実音の C から何半音ずれるかで指定します。</translation>
    </message>
</context>
</TS>
