<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>DetectedSound</name>
    <message>
        <source>guitar</source>
        <translation>guitare</translation>
    </message>
    <message>
        <source>violin</source>
        <translation>violon</translation>
    </message>
    <message>
        <source>piano</source>
        <translation>piano</translation>
    </message>
    <message>
        <source>vocal</source>
        <translation>voix</translation>
    </message>
</context>
<context>
    <name>FrequencyPage</name>
    <message>
        <source>Reference A4 in hertz</source>
        <translation>Diapason A4 en hertz</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>Reset to 440 Hz</source>
        <translation>Revenir à 440 Hz</translation>
    </message>
    <message>
        <source>Stop Listening</source>
        <translation>Arrêter l’écoute</translation>
    </message>
    <message>
        <source>Listen for an A</source>
        <translation>Écouter un la</translation>
    </message>
</context>
<context>
    <name>Input</name>
    <message>
        <source>System default</source>
        <translation>Valeur par défaut du système</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <extracomment>%1 the chosen input&apos;s name on the sound server, which is not there now.</extracomment>
        <translation>%1 (non connectée)</translation>
    </message>
    <message>
        <source>The sound input the tuner listens to. While the chosen input is not connected, the tuner listens to the system default, and returns to the chosen one when it is back.</source>
        <translation>L’entrée audio qu’écoute l’accordeur. Tant que l’entrée choisie n’est pas connectée, l’accordeur écoute celle par défaut du système, et revient à l’entrée choisie dès qu’elle est de retour.</translation>
    </message>
</context>
<context>
    <name>InputSection</name>
    <message>
        <source>Sound Input</source>
        <translation>Entrée audio</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Back</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>Microphone access</source>
        <translation>Accès au micro</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Back (Esc)</source>
        <translation>Retour (Échap)</translation>
    </message>
    <message>
        <source>Settings (Ctrl+,)</source>
        <translation>Réglages (Ctrl+,)</translation>
    </message>
    <message>
        <source>More options</source>
        <translation>Plus d’options</translation>
    </message>
    <message>
        <source>Enjoying Veltra?</source>
        <translation>Vous aimez Veltra&#xa0;?</translation>
    </message>
    <message>
        <source>If Veltra helps you play in tune, a rating in your software centre helps other musicians find it.</source>
        <translation>Si Veltra vous aide à jouer juste, une note dans votre logithèque aidera d’autres musiciens à le trouver.</translation>
    </message>
    <message>
        <source>Rate Veltra</source>
        <translation>Noter Veltra</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Plus tard</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Rate this App</source>
        <translation>Noter l’application</translation>
    </message>
    <message>
        <source>More Apps</source>
        <translation>Autres applications</translation>
    </message>
    <message>
        <source>Share this App</source>
        <translation>Partager l’application</translation>
    </message>
    <message>
        <source>Contact Us</source>
        <translation>Nous contacter</translation>
    </message>
    <message>
        <source>I&apos;ve been using this great instrument tuner app by %1 called Veltra for iOS. Check it out! #tuner #ios</source>
        <extracomment>What a user shares about the app; %1 is the makers&apos; social-media handle.</extracomment>
        <translation>J’utilise Veltra, un super accordeur d’instruments de %1 pour iOS. Essayez-le&#xa0;! #tuner #ios</translation>
    </message>
    <message>
        <source>Email Unavailable</source>
        <translation>E-mail indisponible</translation>
    </message>
    <message>
        <source>You cannot send emails from this device.</source>
        <translation>Impossible d’envoyer des e-mails depuis cet appareil.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
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
        <translation>Fréquence du A₄</translation>
    </message>
</context>
<context>
    <name>Readout</name>
    <message>
        <source>No note yet</source>
        <translation>Aucune note pour l’instant</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The frequency heard, as &quot;440.5 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 dièse</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 bémol</translation>
    </message>
    <message>
        <source>in tune</source>
        <translation>juste</translation>
    </message>
    <message>
        <source>%1 cents flat</source>
        <extracomment>How far below the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 cents trop bas</translation>
    </message>
    <message>
        <source>%1 cents sharp</source>
        <extracomment>How far above the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 cents trop haut</translation>
    </message>
    <message>
        <source>%1 %2, %3, %4 hertz</source>
        <extracomment>The readout as a screen reader speaks it: %1 the note (&quot;A&quot;, &quot;C sharp&quot;), %2 its octave, %3 how far off it is (&quot;in tune&quot;, &quot;2.0 cents sharp&quot;), %4 the frequency (&quot;440.5&quot;).</extracomment>
        <translation>%1 %2, %3, %4 hertz</translation>
    </message>
    <message>
        <source>concert %1</source>
        <extracomment>Under a transposing instrument&apos;s written note, the concert note that sounds, as &quot;concert C4&quot;.</extracomment>
        <translation>son réel %1</translation>
    </message>
    <message>
        <source>%1, concert %2 %3</source>
        <extracomment>The readout of a transposing instrument&apos;s written note, then the concert note that sounds: %1 the readout as above, %2 the concert note (&quot;C&quot;, &quot;B flat&quot;), %3 its octave.</extracomment>
        <translation>%1, son réel %2 %3</translation>
    </message>
</context>
<context>
    <name>ReferenceCapture</name>
    <message>
        <source>Play an A and hold it for a second.</source>
        <translation>Jouez un la et tenez-le une seconde.</translation>
    </message>
    <message>
        <source>Reference A set to %1 Hz.</source>
        <extracomment>%1 the new reference in whole hertz (&quot;441&quot;).</extracomment>
        <translation>La de référence réglé sur %1 Hz.</translation>
    </message>
    <message>
        <source>The A heard is %1 Hz, outside 400 to 499 Hz: the reference stays.</source>
        <extracomment>%1 the A heard, in whole hertz (&quot;510&quot;); the reference is kept between 400 and 499 Hz.</extracomment>
        <translation>Le la entendu est à %1 Hz, hors de 400 à 499 Hz : la référence reste inchangée.</translation>
    </message>
    <message>
        <source>That note is %1 cents from an A. Play an A and try again.</source>
        <extracomment>%1 how far the steady note was from the nearest A, in cents (&quot;98.0&quot;).</extracomment>
        <translation>Cette note est à %1 cents d’un la. Jouez un la et réessayez.</translation>
    </message>
    <message>
        <source>No steady A heard. Play an A and hold it for a second.</source>
        <translation>Aucun la stable entendu. Jouez un la et tenez-le une seconde.</translation>
    </message>
</context>
<context>
    <name>ScalaImportButton</name>
    <message>
        <source>Choose a Scala File</source>
        <extracomment>The title of the file chooser that imports a scale.</extracomment>
        <translation>Choisir un fichier Scala</translation>
    </message>
    <message>
        <source>Scala scales (*.scl)</source>
        <extracomment>The file chooser&apos;s filters: Scala&apos;s scale files, then every file.</extracomment>
        <translation>Gammes Scala (*.scl)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Tous les fichiers (*)</translation>
    </message>
</context>
<context>
    <name>ScreenSaver</name>
    <message>
        <source>Tuning</source>
        <translation>Accordage en cours</translation>
    </message>
</context>
<context>
    <name>SelectSoundsPage</name>
    <message>
        <source>The readout follows the pitch only while one of the checked sounds is heard.</source>
        <translation>L’affichage ne suit la hauteur que lorsqu’un des sons cochés est entendu.</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>The frequency of the A above middle C to be used as the reference for tuning.</source>
        <translation>La fréquence du A au-dessus du do central, utilisée comme diapason pour l’accordage.</translation>
    </message>
    <message>
        <source>Display a sine tone generator in the main view.</source>
        <translation>Affiche un générateur de sons sinusoïdaux dans la vue principale.</translation>
    </message>
    <message>
        <source>When enabled, the screen turns green when in tune.</source>
        <translation>Si activé, l’écran devient vert quand la note est juste.</translation>
    </message>
    <message>
        <source>When enabled, only the enharmonic sharps are displayed.</source>
        <translation>Si activé, seuls les dièses enharmoniques sont affichés.</translation>
    </message>
    <message>
        <source>When enabled, the live graph is continuous. When disabled, the graph is plotted only when sound is detected, similar to the older versions of Veltra.</source>
        <translation>Si activé, le graphique en direct est continu. Sinon, il n’est tracé que lorsqu’un son est détecté, comme dans les anciennes versions de Veltra.</translation>
    </message>
    <message>
        <source>The width of the center green bar that is considered in tune.</source>
        <translation>La largeur de la bande verte centrale considérée comme juste.</translation>
    </message>
    <message>
        <source>A lower latency works great when you need faster pitch detection (e.g. vocal practice). By using a higher latency, pitch detection will not respond to momentary unintended sounds and noise (ideal for instrument tuning).</source>
        <translation>Une latence faible convient quand la hauteur doit être détectée vite (par ex. pour travailler la voix). Avec une latence plus élevée, la détection ne réagit pas aux sons brefs involontaires ni au bruit (idéal pour accorder un instrument).</translation>
    </message>
    <message>
        <source>Highlights piano key corresponding to the current pitch.</source>
        <translation>Met en évidence la touche de piano correspondant à la hauteur actuelle.</translation>
    </message>
    <message>
        <source>Thickness of the line used in the live pitch graph.</source>
        <translation>Épaisseur du trait du graphique de hauteur en direct.</translation>
    </message>
    <message>
        <source>This feature is very helpful for live situations where time needs to be kept track of.</source>
        <translation>Très pratique sur scène, quand il faut garder l’heure à l’œil.</translation>
    </message>
    <message>
        <source>Use machine learning to enable pitch detection only when certain instruments or vocal sounds are detected.</source>
        <translation>Utilise l’apprentissage automatique pour ne détecter la hauteur que lorsque certains instruments ou la voix sont entendus.</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The reference frequency in whole hertz, as &quot;440 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>Selected Sounds: %1.</source>
        <extracomment>%1 is the list of the sounds chosen, as &quot;Guitar and Piano&quot;.</extracomment>
        <translation>Sons choisis&#xa0;: %1.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Reference A₄</source>
        <translation>Diapason A₄</translation>
    </message>
    <message>
        <source>Tone Generator</source>
        <translation>Générateur de sons</translation>
    </message>
    <message>
        <source>Green Overlay</source>
        <translation>Écran vert</translation>
    </message>
    <message>
        <source>Sharps Only</source>
        <translation>Dièses uniquement</translation>
    </message>
    <message>
        <source>Continuous Display</source>
        <translation>Affichage continu</translation>
    </message>
    <message>
        <source>In-Tune Bar</source>
        <translation>Zone de justesse</translation>
    </message>
    <message>
        <source>Wide ±15¢</source>
        <translation>Large ±15¢</translation>
    </message>
    <message>
        <source>Medium ±10¢</source>
        <translation>Moyenne ±10¢</translation>
    </message>
    <message>
        <source>Narrow ±5¢</source>
        <translation>Étroite ±5¢</translation>
    </message>
    <message>
        <source>Wide, 15 cents either side</source>
        <translation>Large, 15 cents de chaque côté</translation>
    </message>
    <message>
        <source>Medium, 10 cents either side</source>
        <translation>Moyenne, 10 cents de chaque côté</translation>
    </message>
    <message>
        <source>Narrow, 5 cents either side</source>
        <translation>Étroite, 5 cents de chaque côté</translation>
    </message>
    <message>
        <source>Latency</source>
        <translation>Latence</translation>
    </message>
    <message>
        <source>%1 s</source>
        <extracomment>A time in seconds, as &quot;0.25 s&quot;.</extracomment>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Fast</source>
        <translation>Rapide</translation>
    </message>
    <message>
        <source>Steady</source>
        <translation>Stable</translation>
    </message>
    <message>
        <source>Piano Keyboard</source>
        <translation>Clavier de piano</translation>
    </message>
    <message>
        <source>Line Thickness</source>
        <translation>Épaisseur du trait</translation>
    </message>
    <message>
        <source>Thin</source>
        <translation>Fin</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Épais</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>Horloge</translation>
    </message>
    <message>
        <source>Sound Classification</source>
        <translation>Reconnaissance des sons</translation>
    </message>
    <message>
        <source>Select Sounds</source>
        <translation>Choisir les sons</translation>
    </message>
</context>
<context>
    <name>ShareDialog</name>
    <message>
        <source>Share this App</source>
        <translation>Partager l’application</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Copié</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
</context>
<context>
    <name>SoundList</name>
    <message>
        <source>Guitar</source>
        <translation>guitare</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>violon</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>piano</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>voix</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <extracomment>The last joint of a list of sounds: &quot;Guitar, Violin and Voice&quot;.</extracomment>
        <translation>%1 et %2</translation>
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
        <translation>Choisir les sons</translation>
    </message>
    <message>
        <source>Guitar</source>
        <translation>Guitare</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>Violon</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>Piano</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>Voix</translation>
    </message>
</context>
<context>
    <name>Temperament</name>
    <message>
        <source>Equal temperament</source>
        <translation>Tempérament égal</translation>
    </message>
    <message>
        <source>Pythagorean</source>
        <translation>Pythagoricien</translation>
    </message>
    <message>
        <source>Quarter-comma meantone</source>
        <translation>Mésotonique 1/4 de comma</translation>
    </message>
    <message>
        <source>Sixth-comma meantone</source>
        <translation>Mésotonique 1/6 de comma</translation>
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
        <translation>Intonation juste (limite 5)</translation>
    </message>
    <message>
        <source>Imported scale</source>
        <translation>Gamme importée</translation>
    </message>
</context>
<context>
    <name>ToneGenerator</name>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 dièse</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 bémol</translation>
    </message>
    <message>
        <source>Play %1</source>
        <extracomment>A reference-tone button as a screen reader names it; %1 is the note, as &quot;C sharp&quot;.</extracomment>
        <translation>Jouer %1</translation>
    </message>
    <message>
        <source>Octave %1</source>
        <translation>Octave %1</translation>
    </message>
</context>
<context>
    <name>Tuner</name>
    <message>
        <source>Microphone Access Required</source>
        <translation>Accès au micro requis</translation>
    </message>
    <message>
        <source>This app requires access to the microphone to work. Go to Settings -&gt; Privacy -&gt; Microphone and enable Veltra to give access.</source>
        <translation>Cette application a besoin du micro pour fonctionner. Allez dans Réglages → Confidentialité → Micro et autorisez Veltra.</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Detected %1 sound</source>
        <extracomment>%1 is the kind of sound heard: guitar, violin, piano or vocal.</extracomment>
        <translation>Son de %1 détecté</translation>
    </message>
    <message>
        <source>Listening...</source>
        <translation>Écoute…</translation>
    </message>
    <message>
        <source>Listening paused: no sound input</source>
        <translation>Écoute en pause&#xa0;: aucune entrée audio</translation>
    </message>
</context>
<context>
    <name>TunerPage</name>
    <message>
        <source>Pitch graph</source>
        <translation>Graphique de hauteur</translation>
    </message>
    <message>
        <source>Piano keyboard</source>
        <translation>Clavier de piano</translation>
    </message>
</context>
<context>
    <name>TuningSettings</name>
    <message>
        <source>Tuning System</source>
        <translation>Système d’accord</translation>
    </message>
    <message>
        <source>Tonic</source>
        <translation>Tonique</translation>
    </message>
    <message>
        <source>Import Scala File…</source>
        <translation>Importer un fichier Scala…</translation>
    </message>
    <message>
        <source>Path of a .scl file</source>
        <translation>Chemin d’un fichier .scl</translation>
    </message>
    <message>
        <source>Instrument Key</source>
        <translation>Tonalité de l’instrument</translation>
    </message>
    <message>
        <source>Transposition</source>
        <translation>Transposition</translation>
    </message>
    <message>
        <source>C (concert)</source>
        <translation>Ut (son réel)</translation>
    </message>
    <message>
        <source>This scale cannot be used: %1</source>
        <extracomment>%1 is why, in English, as &quot;line 4: the pitches must rise from the tonic to the octave&quot;.</extracomment>
        <translation>Cette gamme ne peut pas être utilisée : %1</translation>
    </message>
    <message>
        <source>Equal temperament divides the octave into twelve equal semitones. A historical temperament or just intonation gives each note of the scale on the tonic its own pitch, and the tuner shows a note as in tune when it is in tune there; the reference A stays where it is. Import a Scala file (.scl) of twelve notes to tune to your own table.</source>
        <translation>Le tempérament égal divise l’octave en douze demi-tons égaux. Un tempérament historique ou l’intonation juste donne à chaque note de la gamme sur la tonique sa propre hauteur, et l’accordeur montre une note juste quand elle est juste dans ce système ; le La de référence reste où il est. Importez un fichier Scala (.scl) de douze notes pour accorder selon votre propre table.</translation>
    </message>
    <message>
        <source>For transposing instruments: the tuner names the notes as they are written for an instrument in this key, and the tone buttons play the written notes. B♭ for clarinet and trumpet, E♭ for alto saxophone, F for horn; any other key as the semitones its written C sounds from concert C.</source>
        <translation>Pour les instruments transpositeurs : l’accordeur nomme les notes telles qu’elles sont écrites pour un instrument dans cette tonalité, et les boutons de son jouent les notes écrites. Si♭ pour la clarinette et la trompette, Mi♭ pour le saxophone alto, Fa pour le cor ; toute autre tonalité en demi-tons entre son Do écrit et le Do réel.</translation>
    </message>
</context>
</TS>
