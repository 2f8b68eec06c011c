<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru">
<context>
    <name>DetectedSound</name>
    <message>
        <source>guitar</source>
        <translation>гитара</translation>
    </message>
    <message>
        <source>violin</source>
        <translation>скрипка</translation>
    </message>
    <message>
        <source>piano</source>
        <translation>фортепиано</translation>
    </message>
    <message>
        <source>vocal</source>
        <translation>голос</translation>
    </message>
</context>
<context>
    <name>FrequencyPage</name>
    <message>
        <source>Reference A4 in hertz</source>
        <translation>Камертон A4 в герцах</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Гц</translation>
    </message>
    <message>
        <source>Reset to 440 Hz</source>
        <translation>Сбросить на 440 Гц</translation>
    </message>
    <message>
        <source>Stop Listening</source>
        <translation>Остановить прослушивание</translation>
    </message>
    <message>
        <source>Listen for an A</source>
        <translation>Услышать ля</translation>
    </message>
</context>
<context>
    <name>Input</name>
    <message>
        <source>System default</source>
        <translation>Системный по умолчанию</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <extracomment>%1 the chosen input&apos;s name on the sound server, which is not there now.</extracomment>
        <translation>%1 (не подключён)</translation>
    </message>
    <message>
        <source>The sound input the tuner listens to. While the chosen input is not connected, the tuner listens to the system default, and returns to the chosen one when it is back.</source>
        <translation>Звуковой вход, который слушает тюнер. Пока выбранный вход не подключён, тюнер слушает системный вход по умолчанию и возвращается к выбранному, когда тот появляется снова.</translation>
    </message>
</context>
<context>
    <name>InputSection</name>
    <message>
        <source>Sound Input</source>
        <translation>Звуковой вход</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Back</source>
        <translation>Назад</translation>
    </message>
    <message>
        <source>Microphone access</source>
        <translation>Доступ к микрофону</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Back (Esc)</source>
        <translation>Назад (Esc)</translation>
    </message>
    <message>
        <source>Settings (Ctrl+,)</source>
        <translation>Настройки (Ctrl+,)</translation>
    </message>
    <message>
        <source>More options</source>
        <translation>Другие действия</translation>
    </message>
    <message>
        <source>Enjoying Veltra?</source>
        <translation>Нравится Veltra?</translation>
    </message>
    <message>
        <source>If Veltra helps you play in tune, a rating in your software centre helps other musicians find it.</source>
        <translation>Если Veltra помогает вам играть чисто, оценка в центре приложений поможет другим музыкантам найти её.</translation>
    </message>
    <message>
        <source>Rate Veltra</source>
        <translation>Оценить Veltra</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Не сейчас</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Rate this App</source>
        <translation>Оценить приложение</translation>
    </message>
    <message>
        <source>More Apps</source>
        <translation>Другие приложения</translation>
    </message>
    <message>
        <source>Share this App</source>
        <translation>Поделиться приложением</translation>
    </message>
    <message>
        <source>Contact Us</source>
        <translation>Связаться с нами</translation>
    </message>
    <message>
        <source>I&apos;ve been using this great instrument tuner app by %1 called Veltra for iOS. Check it out! #tuner #ios</source>
        <extracomment>What a user shares about the app; %1 is the makers&apos; social-media handle.</extracomment>
        <translation>Я пользуюсь Veltra — отличным тюнером для инструментов от %1 для iOS. Попробуйте! #tuner #ios</translation>
    </message>
    <message>
        <source>Email Unavailable</source>
        <translation>Почта недоступна</translation>
    </message>
    <message>
        <source>You cannot send emails from this device.</source>
        <translation>С этого устройства нельзя отправлять почту.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
</context>
<context>
    <name>MessageDialog</name>
    <message>
        <source>OK</source>
        <translation>ОК</translation>
    </message>
</context>
<context>
    <name>Picker</name>
    <message>
        <source>A₄ Frequency</source>
        <translation>Частота A₄</translation>
    </message>
</context>
<context>
    <name>Readout</name>
    <message>
        <source>No note yet</source>
        <translation>Нота пока не определена</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The frequency heard, as &quot;440.5 Hz&quot;.</extracomment>
        <translation>%1 Гц</translation>
    </message>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 диез</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 бемоль</translation>
    </message>
    <message>
        <source>in tune</source>
        <translation>чисто</translation>
    </message>
    <message>
        <source>%1 cents flat</source>
        <extracomment>How far below the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>на %1 цента ниже</translation>
    </message>
    <message>
        <source>%1 cents sharp</source>
        <extracomment>How far above the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>на %1 цента выше</translation>
    </message>
    <message>
        <source>%1 %2, %3, %4 hertz</source>
        <extracomment>The readout as a screen reader speaks it: %1 the note (&quot;A&quot;, &quot;C sharp&quot;), %2 its octave, %3 how far off it is (&quot;in tune&quot;, &quot;2.0 cents sharp&quot;), %4 the frequency (&quot;440.5&quot;).</extracomment>
        <translation>%1 %2, %3, %4 герца</translation>
    </message>
    <message>
        <source>concert %1</source>
        <extracomment>Under a transposing instrument&apos;s written note, the concert note that sounds, as &quot;concert C4&quot;.</extracomment>
        <translation>звучит %1</translation>
    </message>
    <message>
        <source>%1, concert %2 %3</source>
        <extracomment>The readout of a transposing instrument&apos;s written note, then the concert note that sounds: %1 the readout as above, %2 the concert note (&quot;C&quot;, &quot;B flat&quot;), %3 its octave.</extracomment>
        <translation>%1, звучит %2 %3</translation>
    </message>
</context>
<context>
    <name>ReferenceCapture</name>
    <message>
        <source>Play an A and hold it for a second.</source>
        <translation>Сыграйте ля и держите его секунду.</translation>
    </message>
    <message>
        <source>Reference A set to %1 Hz.</source>
        <extracomment>%1 the new reference in whole hertz (&quot;441&quot;).</extracomment>
        <translation>Опорное ля установлено на %1 Гц.</translation>
    </message>
    <message>
        <source>The A heard is %1 Hz, outside 400 to 499 Hz: the reference stays.</source>
        <extracomment>%1 the A heard, in whole hertz (&quot;510&quot;); the reference is kept between 400 and 499 Hz.</extracomment>
        <translation>Услышанное ля — %1 Гц, вне диапазона 400–499 Гц: опорная частота не изменена.</translation>
    </message>
    <message>
        <source>That note is %1 cents from an A. Play an A and try again.</source>
        <extracomment>%1 how far the steady note was from the nearest A, in cents (&quot;98.0&quot;).</extracomment>
        <translation>Эта нота отстоит от ля на %1 цента. Сыграйте ля и попробуйте снова.</translation>
    </message>
    <message>
        <source>No steady A heard. Play an A and hold it for a second.</source>
        <translation>Ровного ля не слышно. Сыграйте ля и держите его секунду.</translation>
    </message>
</context>
<context>
    <name>ScalaImportButton</name>
    <message>
        <source>Choose a Scala File</source>
        <extracomment>The title of the file chooser that imports a scale.</extracomment>
        <translation>Выбор файла Scala</translation>
    </message>
    <message>
        <source>Scala scales (*.scl)</source>
        <extracomment>The file chooser&apos;s filters: Scala&apos;s scale files, then every file.</extracomment>
        <translation>Строи Scala (*.scl)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Все файлы (*)</translation>
    </message>
</context>
<context>
    <name>ScreenSaver</name>
    <message>
        <source>Tuning</source>
        <translation>Идёт настройка</translation>
    </message>
</context>
<context>
    <name>SelectSoundsPage</name>
    <message>
        <source>The readout follows the pitch only while one of the checked sounds is heard.</source>
        <translation>Показания следуют за высотой звука, только пока слышен один из отмеченных звуков.</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>The frequency of the A above middle C to be used as the reference for tuning.</source>
        <translation>Частота ноты A над до первой октавы, по которой идёт настройка (камертон).</translation>
    </message>
    <message>
        <source>Display a sine tone generator in the main view.</source>
        <translation>Показывает на главном экране генератор синусоидального тона.</translation>
    </message>
    <message>
        <source>When enabled, the screen turns green when in tune.</source>
        <translation>Если включено, экран становится зелёным, когда звук настроен чисто.</translation>
    </message>
    <message>
        <source>When enabled, only the enharmonic sharps are displayed.</source>
        <translation>Если включено, показываются только энгармонические диезы.</translation>
    </message>
    <message>
        <source>When enabled, the live graph is continuous. When disabled, the graph is plotted only when sound is detected, similar to the older versions of Veltra.</source>
        <translation>Если включено, график рисуется непрерывно. Если выключено, он рисуется только при обнаружении звука, как в старых версиях Veltra.</translation>
    </message>
    <message>
        <source>The width of the center green bar that is considered in tune.</source>
        <translation>Ширина зелёной полосы в центре, которая считается чистой настройкой.</translation>
    </message>
    <message>
        <source>A lower latency works great when you need faster pitch detection (e.g. vocal practice). By using a higher latency, pitch detection will not respond to momentary unintended sounds and noise (ideal for instrument tuning).</source>
        <translation>Малая задержка хороша, когда нужно быстрее определять высоту (например, при занятиях вокалом). С большей задержкой определение не реагирует на случайные короткие звуки и шум (идеально для настройки инструментов).</translation>
    </message>
    <message>
        <source>Highlights piano key corresponding to the current pitch.</source>
        <translation>Подсвечивает клавишу фортепиано, соответствующую текущей высоте звука.</translation>
    </message>
    <message>
        <source>Thickness of the line used in the live pitch graph.</source>
        <translation>Толщина линии на графике высоты звука.</translation>
    </message>
    <message>
        <source>This feature is very helpful for live situations where time needs to be kept track of.</source>
        <translation>Очень удобно на концертах, когда нужно следить за временем.</translation>
    </message>
    <message>
        <source>Use machine learning to enable pitch detection only when certain instruments or vocal sounds are detected.</source>
        <translation>С помощью машинного обучения определяет высоту, только когда слышны выбранные инструменты или голос.</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The reference frequency in whole hertz, as &quot;440 Hz&quot;.</extracomment>
        <translation>%1 Гц</translation>
    </message>
    <message>
        <source>Selected Sounds: %1.</source>
        <extracomment>%1 is the list of the sounds chosen, as &quot;Guitar and Piano&quot;.</extracomment>
        <translation>Выбранные звуки: %1.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Reference A₄</source>
        <translation>Камертон A₄</translation>
    </message>
    <message>
        <source>Tone Generator</source>
        <translation>Генератор тона</translation>
    </message>
    <message>
        <source>Green Overlay</source>
        <translation>Зелёный экран</translation>
    </message>
    <message>
        <source>Sharps Only</source>
        <translation>Только диезы</translation>
    </message>
    <message>
        <source>Continuous Display</source>
        <translation>Непрерывный график</translation>
    </message>
    <message>
        <source>In-Tune Bar</source>
        <translation>Зона чистого строя</translation>
    </message>
    <message>
        <source>Wide ±15¢</source>
        <translation>Широкая ±15¢</translation>
    </message>
    <message>
        <source>Medium ±10¢</source>
        <translation>Средняя ±10¢</translation>
    </message>
    <message>
        <source>Narrow ±5¢</source>
        <translation>Узкая ±5¢</translation>
    </message>
    <message>
        <source>Wide, 15 cents either side</source>
        <translation>Широкая, 15 центов в каждую сторону</translation>
    </message>
    <message>
        <source>Medium, 10 cents either side</source>
        <translation>Средняя, 10 центов в каждую сторону</translation>
    </message>
    <message>
        <source>Narrow, 5 cents either side</source>
        <translation>Узкая, 5 центов в каждую сторону</translation>
    </message>
    <message>
        <source>Latency</source>
        <translation>Задержка</translation>
    </message>
    <message>
        <source>%1 s</source>
        <extracomment>A time in seconds, as &quot;0.25 s&quot;.</extracomment>
        <translation>%1 с</translation>
    </message>
    <message>
        <source>Fast</source>
        <translation>Быстро</translation>
    </message>
    <message>
        <source>Steady</source>
        <translation>Плавно</translation>
    </message>
    <message>
        <source>Piano Keyboard</source>
        <translation>Клавиатура фортепиано</translation>
    </message>
    <message>
        <source>Line Thickness</source>
        <translation>Толщина линии</translation>
    </message>
    <message>
        <source>Thin</source>
        <translation>Тонкая</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Толстая</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>Часы</translation>
    </message>
    <message>
        <source>Sound Classification</source>
        <translation>Распознавание звуков</translation>
    </message>
    <message>
        <source>Select Sounds</source>
        <translation>Выбор звуков</translation>
    </message>
</context>
<context>
    <name>ShareDialog</name>
    <message>
        <source>Share this App</source>
        <translation>Поделиться приложением</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Скопировано</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Копировать</translation>
    </message>
</context>
<context>
    <name>SoundList</name>
    <message>
        <source>Guitar</source>
        <translation>гитара</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>скрипка</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>фортепиано</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>голос</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <extracomment>The last joint of a list of sounds: &quot;Guitar, Violin and Voice&quot;.</extracomment>
        <translation>%1 и %2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <extracomment>Every other joint of a list of sounds: &quot;Guitar, Violin and Voice&quot;.</extracomment>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>Sounds</name>
    <message>
        <source>Select Sounds</source>
        <translation>Выбор звуков</translation>
    </message>
    <message>
        <source>Guitar</source>
        <translation>Гитара</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>Скрипка</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>Фортепиано</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>Голос</translation>
    </message>
</context>
<context>
    <name>Temperament</name>
    <message>
        <source>Equal temperament</source>
        <translation>Равномерная темперация</translation>
    </message>
    <message>
        <source>Pythagorean</source>
        <translation>Пифагоров строй</translation>
    </message>
    <message>
        <source>Quarter-comma meantone</source>
        <translation>Среднетоновая (1/4 коммы)</translation>
    </message>
    <message>
        <source>Sixth-comma meantone</source>
        <translation>Среднетоновая (1/6 коммы)</translation>
    </message>
    <message>
        <source>Werckmeister III</source>
        <translation>Веркмейстер III</translation>
    </message>
    <message>
        <source>Kirnberger III</source>
        <translation>Кирнбергер III</translation>
    </message>
    <message>
        <source>Vallotti</source>
        <translation>Валлотти</translation>
    </message>
    <message>
        <source>Young (1799)</source>
        <translation>Юнг (1799)</translation>
    </message>
    <message>
        <source>Just intonation (5-limit)</source>
        <translation>Чистый строй (5-предельный)</translation>
    </message>
    <message>
        <source>Imported scale</source>
        <translation>Импортированная гамма</translation>
    </message>
</context>
<context>
    <name>ToneGenerator</name>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 диез</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 бемоль</translation>
    </message>
    <message>
        <source>Play %1</source>
        <extracomment>A reference-tone button as a screen reader names it; %1 is the note, as &quot;C sharp&quot;.</extracomment>
        <translation>Сыграть %1</translation>
    </message>
    <message>
        <source>Octave %1</source>
        <translation>Октава %1</translation>
    </message>
</context>
<context>
    <name>Tuner</name>
    <message>
        <source>Microphone Access Required</source>
        <translation>Нужен доступ к микрофону</translation>
    </message>
    <message>
        <source>This app requires access to the microphone to work. Go to Settings -&gt; Privacy -&gt; Microphone and enable Veltra to give access.</source>
        <translation>Приложению нужен доступ к микрофону. Откройте Настройки → Конфиденциальность → Микрофон и разрешите доступ для Veltra.</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>Detected %1 sound</source>
        <extracomment>%1 is the kind of sound heard: guitar, violin, piano or vocal.</extracomment>
        <translation>Распознан звук: %1</translation>
    </message>
    <message>
        <source>Listening...</source>
        <translation>Слушаю…</translation>
    </message>
    <message>
        <source>Listening paused: no sound input</source>
        <translation>Прослушивание приостановлено: нет входного сигнала</translation>
    </message>
</context>
<context>
    <name>TunerPage</name>
    <message>
        <source>Pitch graph</source>
        <translation>График высоты звука</translation>
    </message>
    <message>
        <source>Piano keyboard</source>
        <translation>Клавиатура фортепиано</translation>
    </message>
</context>
<context>
    <name>TuningSettings</name>
    <message>
        <source>Tuning System</source>
        <translation>Строй</translation>
    </message>
    <message>
        <source>Tonic</source>
        <translation>Тоника</translation>
    </message>
    <message>
        <source>Import Scala File…</source>
        <translation>Импорт файла Scala…</translation>
    </message>
    <message>
        <source>Path of a .scl file</source>
        <translation>Путь к файлу .scl</translation>
    </message>
    <message>
        <source>Instrument Key</source>
        <translation>Строй инструмента</translation>
    </message>
    <message>
        <source>Transposition</source>
        <translation>Транспозиция</translation>
    </message>
    <message>
        <source>C (concert)</source>
        <translation>C (концертный)</translation>
    </message>
    <message>
        <source>This scale cannot be used: %1</source>
        <extracomment>%1 is why, in English, as &quot;line 4: the pitches must rise from the tonic to the octave&quot;.</extracomment>
        <translation>Эту гамму нельзя использовать: %1</translation>
    </message>
    <message>
        <source>Equal temperament divides the octave into twelve equal semitones. A historical temperament or just intonation gives each note of the scale on the tonic its own pitch, and the tuner shows a note as in tune when it is in tune there; the reference A stays where it is. Import a Scala file (.scl) of twelve notes to tune to your own table.</source>
        <translation>Равномерная темперация делит октаву на двенадцать равных полутонов. Историческая темперация или чистый строй дают каждой ноте гаммы от тоники собственную высоту, и тюнер показывает ноту чистой, когда она чиста в этом строе; опорное ля остаётся на месте. Импортируйте файл Scala (.scl) из двенадцати нот, чтобы настраивать по своей таблице.</translation>
    </message>
    <message>
        <source>For transposing instruments: the tuner names the notes as they are written for an instrument in this key, and the tone buttons play the written notes. B♭ for clarinet and trumpet, E♭ for alto saxophone, F for horn; any other key as the semitones its written C sounds from concert C.</source>
        <translation>Для транспонирующих инструментов: тюнер называет ноты так, как они записаны для инструмента в этом строе, а кнопки тонов играют записанные ноты. B♭ для кларнета и трубы, E♭ для альт-саксофона, F для валторны; любой другой строй — как число полутонов между его записанным C и концертным C.</translation>
    </message>
</context>
</TS>
