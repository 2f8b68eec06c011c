<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>DetectedSound</name>
    <message>
        <source>guitar</source>
        <translation>Gitarre</translation>
    </message>
    <message>
        <source>violin</source>
        <translation>Geige</translation>
    </message>
    <message>
        <source>piano</source>
        <translation>Klavier</translation>
    </message>
    <message>
        <source>vocal</source>
        <translation>Stimme</translation>
    </message>
</context>
<context>
    <name>FrequencyPage</name>
    <message>
        <source>Reference A4 in hertz</source>
        <translation>Kammerton A4 in Hertz</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>Reset to 440 Hz</source>
        <translation>Auf 440 Hz zurücksetzen</translation>
    </message>
    <message>
        <source>Stop Listening</source>
        <translation>Zuhören beenden</translation>
    </message>
    <message>
        <source>Listen for an A</source>
        <translation>Auf ein A hören</translation>
    </message>
</context>
<context>
    <name>Input</name>
    <message>
        <source>System default</source>
        <translation>Systemstandard</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <extracomment>%1 the chosen input&apos;s name on the sound server, which is not there now.</extracomment>
        <translation>%1 (nicht verbunden)</translation>
    </message>
    <message>
        <source>The sound input the tuner listens to. While the chosen input is not connected, the tuner listens to the system default, and returns to the chosen one when it is back.</source>
        <translation>Der Audioeingang, auf den der Stimmer hört. Solange der gewählte Eingang nicht verbunden ist, hört der Stimmer auf den Systemstandard und kehrt zum gewählten zurück, sobald er wieder da ist.</translation>
    </message>
</context>
<context>
    <name>InputSection</name>
    <message>
        <source>Sound Input</source>
        <translation>Audioeingang</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Microphone access</source>
        <translation>Mikrofonzugriff</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Back (Esc)</source>
        <translation>Zurück (Esc)</translation>
    </message>
    <message>
        <source>Settings (Ctrl+,)</source>
        <translation>Einstellungen (Strg+,)</translation>
    </message>
    <message>
        <source>More options</source>
        <translation>Weitere Optionen</translation>
    </message>
    <message>
        <source>Enjoying Veltra?</source>
        <translation>Gefällt dir Veltra?</translation>
    </message>
    <message>
        <source>If Veltra helps you play in tune, a rating in your software centre helps other musicians find it.</source>
        <translation>Wenn dir Veltra hilft, sauber zu spielen, hilft eine Bewertung in deinem Software-Center anderen Musikern, es zu finden.</translation>
    </message>
    <message>
        <source>Rate Veltra</source>
        <translation>Veltra bewerten</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Nicht jetzt</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Rate this App</source>
        <translation>App bewerten</translation>
    </message>
    <message>
        <source>More Apps</source>
        <translation>Weitere Apps</translation>
    </message>
    <message>
        <source>Share this App</source>
        <translation>App teilen</translation>
    </message>
    <message>
        <source>Contact Us</source>
        <translation>Kontakt</translation>
    </message>
    <message>
        <source>I&apos;ve been using this great instrument tuner app by %1 called Veltra for iOS. Check it out! #tuner #ios</source>
        <extracomment>What a user shares about the app; %1 is the makers&apos; social-media handle.</extracomment>
        <translation>Ich benutze Veltra, ein großartiges Stimmgerät für Instrumente von %1, für iOS. Probier es aus! #tuner #ios</translation>
    </message>
    <message>
        <source>Email Unavailable</source>
        <translation>E-Mail nicht verfügbar</translation>
    </message>
    <message>
        <source>You cannot send emails from this device.</source>
        <translation>Auf diesem Gerät können keine E-Mails gesendet werden.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
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
        <translation>Frequenz von A₄</translation>
    </message>
</context>
<context>
    <name>Readout</name>
    <message>
        <source>No note yet</source>
        <translation>Noch kein Ton</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The frequency heard, as &quot;440.5 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 Kreuz</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 b</translation>
    </message>
    <message>
        <source>in tune</source>
        <translation>sauber gestimmt</translation>
    </message>
    <message>
        <source>%1 cents flat</source>
        <extracomment>How far below the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 Cent zu tief</translation>
    </message>
    <message>
        <source>%1 cents sharp</source>
        <extracomment>How far above the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 Cent zu hoch</translation>
    </message>
    <message>
        <source>%1 %2, %3, %4 hertz</source>
        <extracomment>The readout as a screen reader speaks it: %1 the note (&quot;A&quot;, &quot;C sharp&quot;), %2 its octave, %3 how far off it is (&quot;in tune&quot;, &quot;2.0 cents sharp&quot;), %4 the frequency (&quot;440.5&quot;).</extracomment>
        <translation>%1 %2, %3, %4 Hertz</translation>
    </message>
    <message>
        <source>concert %1</source>
        <extracomment>Under a transposing instrument&apos;s written note, the concert note that sounds, as &quot;concert C4&quot;.</extracomment>
        <translation>klingend %1</translation>
    </message>
    <message>
        <source>%1, concert %2 %3</source>
        <extracomment>The readout of a transposing instrument&apos;s written note, then the concert note that sounds: %1 the readout as above, %2 the concert note (&quot;C&quot;, &quot;B flat&quot;), %3 its octave.</extracomment>
        <translation>%1, klingend %2 %3</translation>
    </message>
</context>
<context>
    <name>ReferenceCapture</name>
    <message>
        <source>Play an A and hold it for a second.</source>
        <translation>Spiele ein A und halte es eine Sekunde lang.</translation>
    </message>
    <message>
        <source>Reference A set to %1 Hz.</source>
        <extracomment>%1 the new reference in whole hertz (&quot;441&quot;).</extracomment>
        <translation>Referenz-A auf %1 Hz gesetzt.</translation>
    </message>
    <message>
        <source>The A heard is %1 Hz, outside 400 to 499 Hz: the reference stays.</source>
        <extracomment>%1 the A heard, in whole hertz (&quot;510&quot;); the reference is kept between 400 and 499 Hz.</extracomment>
        <translation>Das gehörte A hat %1 Hz, außerhalb von 400 bis 499 Hz: Die Referenz bleibt.</translation>
    </message>
    <message>
        <source>That note is %1 cents from an A. Play an A and try again.</source>
        <extracomment>%1 how far the steady note was from the nearest A, in cents (&quot;98.0&quot;).</extracomment>
        <translation>Dieser Ton liegt %1 Cent neben einem A. Spiele ein A und versuche es noch einmal.</translation>
    </message>
    <message>
        <source>No steady A heard. Play an A and hold it for a second.</source>
        <translation>Kein gleichmäßiges A gehört. Spiele ein A und halte es eine Sekunde lang.</translation>
    </message>
</context>
<context>
    <name>ScalaImportButton</name>
    <message>
        <source>Choose a Scala File</source>
        <extracomment>The title of the file chooser that imports a scale.</extracomment>
        <translation>Scala-Datei auswählen</translation>
    </message>
    <message>
        <source>Scala scales (*.scl)</source>
        <extracomment>The file chooser&apos;s filters: Scala&apos;s scale files, then every file.</extracomment>
        <translation>Scala-Skalen (*.scl)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>ScreenSaver</name>
    <message>
        <source>Tuning</source>
        <translation>Stimmen</translation>
    </message>
</context>
<context>
    <name>SelectSoundsPage</name>
    <message>
        <source>The readout follows the pitch only while one of the checked sounds is heard.</source>
        <translation>Die Anzeige folgt der Tonhöhe nur, solange einer der ausgewählten Klänge zu hören ist.</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>The frequency of the A above middle C to be used as the reference for tuning.</source>
        <translation>Die Frequenz des A über dem eingestrichenen C, nach der gestimmt wird (Kammerton).</translation>
    </message>
    <message>
        <source>Display a sine tone generator in the main view.</source>
        <translation>Zeigt auf dem Hauptbildschirm einen Sinuston-Generator.</translation>
    </message>
    <message>
        <source>When enabled, the screen turns green when in tune.</source>
        <translation>Wenn eingeschaltet, wird der Bildschirm grün, sobald der Ton stimmt.</translation>
    </message>
    <message>
        <source>When enabled, only the enharmonic sharps are displayed.</source>
        <translation>Wenn eingeschaltet, werden nur die enharmonischen Kreuz-Namen angezeigt.</translation>
    </message>
    <message>
        <source>When enabled, the live graph is continuous. When disabled, the graph is plotted only when sound is detected, similar to the older versions of Veltra.</source>
        <translation>Wenn eingeschaltet, läuft der Verlauf ohne Unterbrechung. Wenn ausgeschaltet, wird er nur gezeichnet, solange ein Ton erkannt wird, wie in älteren Versionen von Veltra.</translation>
    </message>
    <message>
        <source>The width of the center green bar that is considered in tune.</source>
        <translation>Die Breite des grünen Bereichs in der Mitte, der als sauber gestimmt gilt.</translation>
    </message>
    <message>
        <source>A lower latency works great when you need faster pitch detection (e.g. vocal practice). By using a higher latency, pitch detection will not respond to momentary unintended sounds and noise (ideal for instrument tuning).</source>
        <translation>Eine kurze Latenz eignet sich, wenn die Tonhöhe schneller erkannt werden soll (z. B. beim Gesangsüben). Mit einer längeren Latenz reagiert die Erkennung nicht auf kurze, ungewollte Töne und Geräusche (ideal zum Stimmen von Instrumenten).</translation>
    </message>
    <message>
        <source>Highlights piano key corresponding to the current pitch.</source>
        <translation>Hebt die Klaviertaste des aktuellen Tons hervor.</translation>
    </message>
    <message>
        <source>Thickness of the line used in the live pitch graph.</source>
        <translation>Stärke der Linie im Tonhöhenverlauf.</translation>
    </message>
    <message>
        <source>This feature is very helpful for live situations where time needs to be kept track of.</source>
        <translation>Sehr praktisch auf der Bühne, wenn man die Zeit im Blick behalten muss.</translation>
    </message>
    <message>
        <source>Use machine learning to enable pitch detection only when certain instruments or vocal sounds are detected.</source>
        <translation>Erkennt per maschinellem Lernen, was klingt, und bestimmt die Tonhöhe nur, wenn bestimmte Instrumente oder Gesang zu hören sind.</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The reference frequency in whole hertz, as &quot;440 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>Selected Sounds: %1.</source>
        <extracomment>%1 is the list of the sounds chosen, as &quot;Guitar and Piano&quot;.</extracomment>
        <translation>Ausgewählte Klänge: %1.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Reference A₄</source>
        <translation>Kammerton A₄</translation>
    </message>
    <message>
        <source>Tone Generator</source>
        <translation>Tongenerator</translation>
    </message>
    <message>
        <source>Green Overlay</source>
        <translation>Grüne Anzeige</translation>
    </message>
    <message>
        <source>Sharps Only</source>
        <translation>Nur Kreuze</translation>
    </message>
    <message>
        <source>Continuous Display</source>
        <translation>Durchgehende Anzeige</translation>
    </message>
    <message>
        <source>In-Tune Bar</source>
        <translation>Toleranzbereich</translation>
    </message>
    <message>
        <source>Wide ±15¢</source>
        <translation>Breit ±15¢</translation>
    </message>
    <message>
        <source>Medium ±10¢</source>
        <translation>Mittel ±10¢</translation>
    </message>
    <message>
        <source>Narrow ±5¢</source>
        <translation>Schmal ±5¢</translation>
    </message>
    <message>
        <source>Wide, 15 cents either side</source>
        <translation>Breit, 15 Cent nach jeder Seite</translation>
    </message>
    <message>
        <source>Medium, 10 cents either side</source>
        <translation>Mittel, 10 Cent nach jeder Seite</translation>
    </message>
    <message>
        <source>Narrow, 5 cents either side</source>
        <translation>Schmal, 5 Cent nach jeder Seite</translation>
    </message>
    <message>
        <source>Latency</source>
        <translation>Latenz</translation>
    </message>
    <message>
        <source>%1 s</source>
        <extracomment>A time in seconds, as &quot;0.25 s&quot;.</extracomment>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Fast</source>
        <translation>Schnell</translation>
    </message>
    <message>
        <source>Steady</source>
        <translation>Ruhig</translation>
    </message>
    <message>
        <source>Piano Keyboard</source>
        <translation>Klaviatur</translation>
    </message>
    <message>
        <source>Line Thickness</source>
        <translation>Linienstärke</translation>
    </message>
    <message>
        <source>Thin</source>
        <translation>Dünn</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Dick</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>Uhr</translation>
    </message>
    <message>
        <source>Sound Classification</source>
        <translation>Klangerkennung</translation>
    </message>
    <message>
        <source>Select Sounds</source>
        <translation>Klänge auswählen</translation>
    </message>
</context>
<context>
    <name>ShareDialog</name>
    <message>
        <source>Share this App</source>
        <translation>App teilen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
</context>
<context>
    <name>SoundList</name>
    <message>
        <source>Guitar</source>
        <translation>Gitarre</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>Geige</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>Klavier</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>Stimme</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <extracomment>The last joint of a list of sounds: &quot;Guitar, Violin and Voice&quot;.</extracomment>
        <translation>%1 und %2</translation>
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
        <translation>Klänge auswählen</translation>
    </message>
    <message>
        <source>Guitar</source>
        <translation>Gitarre</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>Geige</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>Klavier</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>Stimme</translation>
    </message>
</context>
<context>
    <name>Temperament</name>
    <message>
        <source>Equal temperament</source>
        <translation>Gleichstufige Stimmung</translation>
    </message>
    <message>
        <source>Pythagorean</source>
        <translation>Pythagoreisch</translation>
    </message>
    <message>
        <source>Quarter-comma meantone</source>
        <translation>Mitteltönig (1/4 Komma)</translation>
    </message>
    <message>
        <source>Sixth-comma meantone</source>
        <translation>Mitteltönig (1/6 Komma)</translation>
    </message>
    <message>
        <source>Werckmeister III</source>
        <translation>Werckmeister III</translation>
    </message>
    <message>
        <source>Kirnberger III</source>
        <translation>Kirnberger III</translation>
    </message>
    <message>
        <source>Vallotti</source>
        <translation>Vallotti</translation>
    </message>
    <message>
        <source>Young (1799)</source>
        <translation>Young (1799)</translation>
    </message>
    <message>
        <source>Just intonation (5-limit)</source>
        <translation>Reine Stimmung (5-Limit)</translation>
    </message>
    <message>
        <source>Imported scale</source>
        <translation>Importierte Skala</translation>
    </message>
</context>
<context>
    <name>ToneGenerator</name>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 Kreuz</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 b</translation>
    </message>
    <message>
        <source>Play %1</source>
        <extracomment>A reference-tone button as a screen reader names it; %1 is the note, as &quot;C sharp&quot;.</extracomment>
        <translation>%1 spielen</translation>
    </message>
    <message>
        <source>Octave %1</source>
        <translation>Oktave %1</translation>
    </message>
</context>
<context>
    <name>Tuner</name>
    <message>
        <source>Microphone Access Required</source>
        <translation>Mikrofonzugriff erforderlich</translation>
    </message>
    <message>
        <source>This app requires access to the microphone to work. Go to Settings -&gt; Privacy -&gt; Microphone and enable Veltra to give access.</source>
        <translation>Diese App braucht Zugriff auf das Mikrofon. Öffne Einstellungen → Datenschutz → Mikrofon und erlaube Veltra den Zugriff.</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Detected %1 sound</source>
        <extracomment>%1 is the kind of sound heard: guitar, violin, piano or vocal.</extracomment>
        <translation>%1 erkannt</translation>
    </message>
    <message>
        <source>Listening...</source>
        <translation>Höre zu …</translation>
    </message>
    <message>
        <source>Listening paused: no sound input</source>
        <translation>Zuhören pausiert: kein Audioeingang</translation>
    </message>
</context>
<context>
    <name>TunerPage</name>
    <message>
        <source>Pitch graph</source>
        <translation>Tonhöhenverlauf</translation>
    </message>
    <message>
        <source>Piano keyboard</source>
        <translation>Klaviatur</translation>
    </message>
</context>
<context>
    <name>TuningSettings</name>
    <message>
        <source>Tuning System</source>
        <translation>Stimmungssystem</translation>
    </message>
    <message>
        <source>Tonic</source>
        <translation>Grundton</translation>
    </message>
    <message>
        <source>Import Scala File…</source>
        <translation>Scala-Datei importieren…</translation>
    </message>
    <message>
        <source>Path of a .scl file</source>
        <translation>Pfad einer .scl-Datei</translation>
    </message>
    <message>
        <source>Instrument Key</source>
        <translation>Instrumentenstimmung</translation>
    </message>
    <message>
        <source>Transposition</source>
        <translation>Transposition</translation>
    </message>
    <message>
        <source>C (concert)</source>
        <translation>C (klingend)</translation>
    </message>
    <message>
        <source>This scale cannot be used: %1</source>
        <extracomment>%1 is why, in English, as &quot;line 4: the pitches must rise from the tonic to the octave&quot;.</extracomment>
        <translation>Diese Skala ist nicht verwendbar: %1</translation>
    </message>
    <message>
        <source>Equal temperament divides the octave into twelve equal semitones. A historical temperament or just intonation gives each note of the scale on the tonic its own pitch, and the tuner shows a note as in tune when it is in tune there; the reference A stays where it is. Import a Scala file (.scl) of twelve notes to tune to your own table.</source>
        <translation>Die gleichstufige Stimmung teilt die Oktave in zwölf gleiche Halbtöne. Eine historische Temperatur oder reine Stimmung gibt jedem Ton der Skala auf dem Grundton seine eigene Höhe, und der Stimmer zeigt einen Ton als rein, wenn er dort rein ist; der Kammerton A bleibt, wo er ist. Importieren Sie eine Scala-Datei (.scl) mit zwölf Tönen, um nach Ihrer eigenen Tabelle zu stimmen.</translation>
    </message>
    <message>
        <source>For transposing instruments: the tuner names the notes as they are written for an instrument in this key, and the tone buttons play the written notes. B♭ for clarinet and trumpet, E♭ for alto saxophone, F for horn; any other key as the semitones its written C sounds from concert C.</source>
        <translation>Für transponierende Instrumente: Der Stimmer nennt die Töne so, wie sie für ein Instrument in dieser Stimmung notiert sind, und die Tontasten spielen die notierten Töne. B♭ für Klarinette und Trompete, E♭ für Altsaxophon, F für Horn; jede andere Stimmung als die Halbtöne, um die ihr notiertes C vom klingenden C abweicht.</translation>
    </message>
</context>
</TS>
